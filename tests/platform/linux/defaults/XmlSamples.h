#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {

// Property lists in their XML form, for tests.

inline std::string joined(std::initializer_list<std::string_view> parts) {
  std::string whole;
  for (const std::string_view part : parts) whole += part;
  return whole;
}

/// Returns the value of the bytes; a message if they have none.
inline PropertyList readBytes(std::string_view bytes) {
  const auto read = readPropertyList(bytes);
  if (const auto* value = std::get_if<PropertyList>(&read)) return *value;
  return std::get<PropertyListFault>(read) == PropertyListFault::Binary ? "binary" : "malformed";
}

/// Returns a value after it was encoded and decoded; null if it has no XML form.
inline PropertyList throughXml(const PropertyList& value) {
  const std::optional<std::string> xml = writePropertyList(value);
  return xml ? readBytes(*xml) : PropertyList();
}

inline std::string document(std::string_view content) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)" + std::string(content) +
         "\n</plist>\n";
}

inline PropertyList readElement(std::string_view content) {
  return readBytes(document(content));
}

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

inline PropertyList::Dictionary everything() {
  PropertyList::Data allBytes;
  for (int i = 0; i < 256; ++i) allBytes.push_back(static_cast<std::uint8_t>(i));
  return {{"array",
           PropertyList::Array{1, "two", 3.5, PropertyList::Array{}, PropertyList::Dictionary{}}},
          {"data", allBytes},
          {"date", PropertyList::Date{700000000}},
          {"dictionary",
           PropertyList::Dictionary{{"inner", PropertyList::Dictionary{{"innermost", false}}}}},
          {"integer", -42},
          {"real", 0.78},
          {"string", "Mail \U0001F4EC & <more>"},
          {"true", true}};
}

}  // namespace vembrix
