#include "spaces/Whitespace.h"

#include <algorithm>
#include <array>

namespace vembrix {
namespace {

// Every white-space and line-end character as UTF-8. Unicode no longer counts U+200B as white
// space, but the system's own trimming does, and a name of it alone would be invisible.
constexpr std::array<std::string_view, 26> kWhitespace = {
    "\t",           "\n",           "\v",           "\f",           "\r",           " ",
    "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
    "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88",
    "\xE2\x80\x89", "\xE2\x80\x8A", "\xE2\x80\x8B", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF",
    "\xE2\x81\x9F", "\xE3\x80\x80"};

}  // namespace

std::string_view trimWhitespace(std::string_view text) {
  const auto leading = [&] {
    return std::ranges::find_if(kWhitespace,
                                [&](std::string_view space) { return text.starts_with(space); });
  };
  const auto trailing = [&] {
    return std::ranges::find_if(kWhitespace,
                                [&](std::string_view space) { return text.ends_with(space); });
  };
  for (auto space = leading(); !text.empty() && space != kWhitespace.end(); space = leading()) {
    text.remove_prefix(space->size());
  }
  for (auto space = trailing(); !text.empty() && space != kWhitespace.end(); space = trailing()) {
    text.remove_suffix(space->size());
  }
  return text;
}

}  // namespace vembrix
