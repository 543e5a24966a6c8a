#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

// Property lists as bytes. Any thread.

/// The XML form (version 1.0, UTF-8). Nothing when the value is null or holds a
/// null anywhere, since property lists have none. Characters that XML cannot
/// hold, and bytes that are not UTF-8, are written as U+FFFD.
std::optional<std::string> xmlPropertyList(const PropertyList& value);

/// Reads the XML and the binary form. Nothing when the bytes are neither.
std::optional<PropertyList> parsePropertyList(std::string_view bytes);

}  // namespace vembrix
