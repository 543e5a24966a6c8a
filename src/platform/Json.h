#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

// JSON text (UTF-8). Any thread.

/// Encodes an array or dictionary in compact form; the order of members is unspecified. Empty when
/// the value is of another kind, or holds what JSON cannot: data, dates, numbers that are not
/// finite.
std::optional<std::string> encodeJson(const PropertyList& value);

/// Decodes any JSON text whose top level is an array or an object. null becomes a null value; a
/// number becomes an integer where it is written without fraction or exponent and fits 64 bits,
/// else a real. Empty when the text is not valid.
std::optional<PropertyList> decodeJson(std::string_view text);

}  // namespace vembrix
