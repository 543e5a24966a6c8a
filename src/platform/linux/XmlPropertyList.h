#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/PropertyList.h"

namespace vembrix {

// Property lists as bytes: the XML form, version 1.0, in UTF-8. Any thread.

/// Settings are kilobytes; more bytes than this are neither read nor written.
constexpr std::size_t kPropertyListLimit = std::size_t{2} << 20;

/// Why bytes are no property list that can be read.
enum class PropertyListFault {
  /// The binary form, which is not read.
  Binary,
  /// Anything else: cut off, not XML, too large, or with a document type that
  /// declares something of its own.
  Malformed
};

/// The value that the bytes mean. What cannot be understood costs only itself: a
/// number out of range, a date of no calendar, an unknown or misspelt element is
/// absent from its dictionary and null in its array. So is what is nested deeper
/// than kNestingLimit. Takes time and memory in proportion to the bytes.
std::variant<PropertyList, PropertyListFault> readPropertyList(std::string_view bytes);

/// Nothing when the value is null, holds a null anywhere, or nests deeper than is
/// read. Characters that XML cannot hold are written as U+FFFD. May be larger than
/// what is read.
std::optional<std::string> writePropertyList(const PropertyList& value);

/// Bytes that hold a dictionary, with the value under the key, or without the key
/// for null. No other byte changes, be it understood or not. Nothing when the bytes
/// are no dictionary or the value cannot be written.
std::optional<std::string> changedPropertyList(std::string_view bytes, std::string_view key,
                                               const PropertyList& value);

}  // namespace vembrix
