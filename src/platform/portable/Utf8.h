#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vembrix {

// Text as UTF-8. Any thread.

/// The character at the start of a text, or the ill-formed part there.
struct Utf8Character {
  char32_t value = 0;
  /// The number of bytes of the character, or of the part that one U+FFFD replaces. Zero only at
  /// the end of the text.
  std::size_t length = 0;
  bool valid = false;
};

/// Reads strictly: rejects overlong forms, surrogates and values beyond U+10FFFF.
Utf8Character firstCharacter(std::string_view text);

bool isUtf8(std::string_view text);

/// Returns the text with each ill-formed part (a truncated sequence, a stray byte) replaced by one
/// U+FFFD; empty when the text is valid UTF-8.
std::optional<std::string> repairedUtf8(std::string_view text);

/// Appends the UTF-8 form of a Unicode scalar value.
void appendUtf8(std::string& text, char32_t character);

}  // namespace vembrix
