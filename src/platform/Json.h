#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

// JSON text (UTF-8). Any thread.

/// The compact form of an array or dictionary. The order of members is not
/// defined. Nothing when the value is of another kind, or holds what JSON
/// cannot: data, dates, numbers that are not finite.
std::optional<std::string> encodeJson(const PropertyList& value);

/// Any valid JSON text whose top level is an array or an object. true and false
/// become Booleans, null becomes a null value; a number becomes an integer when
/// it is whole and fits 64 bits and is written without fraction or exponent,
/// else a real. Nothing when the text is not valid.
std::optional<PropertyList> decodeJson(std::string_view text);

}  // namespace vembrix
