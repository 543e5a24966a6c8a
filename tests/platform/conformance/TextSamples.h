#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vembrix {

/// Returns valid texts that are easy to get wrong.
inline std::vector<std::string> textSamples() {
  return {"Mail",
          "\u00E9t\u00E9 e\u0301",                       // composed and decomposed
          "\u05E9\u05DC\u05D5\u05DD 123",                // right to left
          "\u200F\u0645\u0631\u062D\u0628\u0627\u200E",  // with direction marks
          "\u65E5\u672C\u8A9E",
          "\U0001F600",
          "\U0001F469\u200D\U0001F680 \U0001F1E9\U0001F1EA \u2764\uFE0F",  // joined, flag, variant
          "\uFEFFa\uFEFF",           // byte order marks as text
          "a\u0085b\u2028c\u2029d",  // other line ends
          "\uFFFD",
          "\x7F",
          "\u07FF\u0800\uD7FF\uE000\uFFFC\U00010000\U0010FFFF"};  // borders of the encoding
}

/// Returns byte sequences none of which is UTF-8.
inline std::vector<std::string> malformedUtf8Samples() {
  return {"\xC3",              // cut off
          "\xE2\x82",          // cut off
          "\xF0\x9F\x98",      // cut off
          "\xC0\xAF",          // overlong
          "\xE0\x80\x80",      // overlong
          "\xF0\x80\x80\x80",  // overlong
          "\xED\xA0\x80",      // a surrogate
          "\xED\xBF\xBF",      // a surrogate
          "\xF4\x90\x80\x80",  // beyond U+10FFFF
          "\xF5\x80\x80\x80",
          "\xFE",
          "\xFF\xFF",
          "\x80\x80"};
}

inline bool isWellFormedUtf8(std::string_view text) {
  std::size_t at = 0;
  const auto continuation = [&](std::size_t index, unsigned first, unsigned last) {
    if (index >= text.size()) return false;
    const auto byte = static_cast<std::uint8_t>(text[index]);
    return byte >= first && byte <= last;
  };
  while (at < text.size()) {
    const auto lead = static_cast<std::uint8_t>(text[at]);
    std::size_t length = 1;
    if (lead >= 0xC2 && lead <= 0xDF) length = 2;
    if (lead >= 0xE0 && lead <= 0xEF) length = 3;
    if (lead >= 0xF0 && lead <= 0xF4) length = 4;
    if (length == 1 && lead >= 0x80) return false;
    const unsigned first = lead == 0xE0 ? 0xA0U : lead == 0xF0 ? 0x90U : 0x80U;
    const unsigned last = lead == 0xED ? 0x9FU : lead == 0xF4 ? 0x8FU : 0xBFU;
    for (std::size_t i = 1; i < length; ++i) {
      if (!continuation(at + i, i == 1 ? first : 0x80, i == 1 ? last : 0xBF)) return false;
    }
    at += length;
  }
  return true;
}

}  // namespace vembrix
