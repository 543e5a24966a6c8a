#include "platform/portable/Utf8.h"

#include <cstdint>

namespace vembrix {
namespace {

struct Range {
  std::uint8_t first = 0x80;
  std::uint8_t last = 0xBF;
};

/// Returns the number of bytes that continue the character; 0 if the byte cannot lead one.
std::size_t continuationCount(std::uint8_t lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 1;
  if (lead >= 0xE0 && lead <= 0xEF) return 2;
  if (lead >= 0xF0 && lead <= 0xF4) return 3;
  return 0;
}

/// Returns the valid second bytes. They exclude overlong forms, surrogates and values beyond
/// U+10FFFF.
Range secondByteRange(std::uint8_t lead) {
  switch (lead) {
    case 0xE0:
      return {0xA0, 0xBF};
    case 0xED:
      return {0x80, 0x9F};
    case 0xF0:
      return {0x90, 0xBF};
    case 0xF4:
      return {0x80, 0x8F};
    default:
      return {};
  }
}

}  // namespace

Utf8Character firstCharacter(std::string_view text) {
  if (text.empty()) return {};
  const auto lead = static_cast<std::uint8_t>(text.front());
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t count = continuationCount(lead);
  if (count == 0) return {0, 1, false};
  char32_t value = lead & (0x3FU >> count);
  Range range = secondByteRange(lead);
  for (std::size_t i = 1; i <= count; ++i) {
    const std::uint8_t byte = i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0;
    if (byte < range.first || byte > range.last) return {0, i, false};
    value = (value << 6) | (byte & 0x3FU);
    range = {};
  }
  return {value, count + 1, true};
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = firstCharacter(text);
    if (!character.valid) return false;
    text.remove_prefix(character.length);
  }
  return true;
}

std::optional<std::string> repairedUtf8(std::string_view text) {
  if (isUtf8(text)) return std::nullopt;
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  std::string repaired;
  while (!text.empty()) {
    const Utf8Character character = firstCharacter(text);
    repaired.append(character.valid ? text.substr(0, character.length) : kReplacement);
    text.remove_prefix(character.length);
  }
  return repaired;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto append = [&](char32_t bits) { text.push_back(static_cast<char>(bits)); };
  if (character < 0x80) {
    append(character);
    return;
  }
  if (character < 0x800) {
    append(0xC0 | (character >> 6));
  } else {
    if (character < 0x10000) {
      append(0xE0 | (character >> 12));
    } else {
      append(0xF0 | (character >> 18));
      append(0x80 | ((character >> 12) & 0x3F));
    }
    append(0x80 | ((character >> 6) & 0x3F));
  }
  append(0x80 | (character & 0x3F));
}

}  // namespace vembrix
