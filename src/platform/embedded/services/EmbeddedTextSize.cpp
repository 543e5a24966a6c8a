#include "platform/TextSize.h"
#include "platform/portable/Utf8.h"

namespace vembrix {
namespace {

/// The width of every character, as a part of the font's size.
constexpr double kAdvance = 0.6;
constexpr double kLineHeight = 1.2;
/// The size of the font of menus and controls.
constexpr double kSystemSize = 13;

}  // namespace

Size textSize(std::string_view text, const Font& font) {
  const double size = font.size.value_or(kSystemSize);
  double characters = 0;
  for (auto character = firstCharacter(text); character.length > 0;
       character = firstCharacter(text)) {
    characters += 1;
    text.remove_prefix(character.length);
  }
  return {characters * kAdvance * size, kLineHeight * size};
}

}  // namespace vembrix
