#include "platform/macos/Utf8.h"

#include <cstddef>

namespace vembrix {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Sequence {
  std::size_t length = 1;
  bool wellFormed = false;
};

/// The sequence at the start of a text that is not empty. The first trailing
/// byte has a narrower range after some leads: that keeps out overlong forms,
/// surrogates, and what lies beyond U+10FFFF.
Sequence firstSequence(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return {1, true};
  if (lead < 0xC2 || lead > 0xF4) return {1, false};

  unsigned low = 0x80;
  unsigned high = 0xBF;
  if (lead == 0xE0) low = 0xA0;
  if (lead == 0xED) high = 0x9F;
  if (lead == 0xF0) low = 0x90;
  if (lead == 0xF4) high = 0x8F;

  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  for (std::size_t i = 1; i < length; ++i) {
    if (i == text.size() || byte(i) < low || byte(i) > high) return {i, false};
    low = 0x80;
    high = 0xBF;
  }
  return {length, true};
}

}  // namespace

std::optional<std::string> repairedUtf8(std::string_view text) {
  std::optional<std::string> repaired;
  for (std::size_t start = 0; start < text.size();) {
    const auto [length, wellFormed] = firstSequence(text.substr(start));
    if (!wellFormed && !repaired) repaired = text.substr(0, start);
    if (repaired) repaired->append(wellFormed ? text.substr(start, length) : kReplacement);
    start += length;
  }
  return repaired;
}

}  // namespace vembrix
