#pragma once

namespace vembrix {

/// Whether XML 1.0 can hold the character, be it as a reference.
constexpr bool isXmlCharacter(char32_t character) {
  if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
  if (character >= 0xD800 && character <= 0xDFFF) return false;
  return character <= 0x10FFFF && character != 0xFFFE && character != 0xFFFF;
}

}  // namespace vembrix
