#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/PropertyList.h"

namespace vembrix {

// Property lists as bytes: the XML form, version 1.0, in UTF-8. Any thread.

/// Larger files are neither read nor written; settings are kilobytes.
constexpr std::size_t kPropertyListLimit = std::size_t{2} << 20;

/// Reasons why bytes cannot be read as a property list.
enum class PropertyListFault {
  /// The binary form, which is not read.
  Binary,
  /// Any other fault: truncated, not XML, too large, or with declarations in the document type.
  Malformed
};

/// Decodes the bytes. An invalid element (a number out of range, an impossible date, an unknown
/// name, nesting deeper than kNestingLimit) is left out of its dictionary and null in its array.
/// Takes time and memory in proportion to the bytes.
std::variant<PropertyList, PropertyListFault> readPropertyList(std::string_view bytes);

/// Encodes the value; empty when it is null, holds a null anywhere, or nests too deep to be read.
/// Characters that XML cannot hold become U+FFFD. The result may exceed kPropertyListLimit.
std::optional<std::string> writePropertyList(const PropertyList& value);

/// Returns the bytes of a dictionary with the value set under the key, or the key removed for null;
/// no other byte changes. Empty when the bytes are no dictionary or the value cannot be written.
std::optional<std::string> changedPropertyList(std::string_view bytes, std::string_view key,
                                               const PropertyList& value);

}  // namespace vembrix
