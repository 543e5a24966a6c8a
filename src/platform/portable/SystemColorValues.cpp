#include "platform/portable/SystemColorValues.h"

namespace vembrix {
namespace {

struct LightAndDark {
  Srgb light;
  Srgb dark;
};

constexpr Srgb bytes(int red, int green, int blue) {
  return {red / 255.0, green / 255.0, blue / 255.0};
}
constexpr Srgb white(double alpha) {
  return {1, 1, 1, alpha};
}
constexpr Srgb black(double alpha) {
  return {0, 0, 0, alpha};
}

constexpr LightAndDark valuesOf(SystemColor name) {
  switch (name) {
    case SystemColor::ControlAccent:
      return {bytes(0, 122, 255), bytes(10, 132, 255)};
    case SystemColor::Label:
      return {black(0.85), white(0.85)};
    case SystemColor::SecondaryLabel:
      // Dark enough for small text on every background of the settings and menus (contrast 4.5 :
      // 1).
      return {black(0.6), white(0.6)};
    case SystemColor::TextBackground:
      return {bytes(255, 255, 255), bytes(30, 30, 30)};
    case SystemColor::Separator:
      return {black(0.1), white(0.1)};
    case SystemColor::WindowBackground:
      return {bytes(236, 236, 236), bytes(50, 50, 50)};
    case SystemColor::Link:
      return {bytes(0, 88, 196), bytes(104, 178, 255)};
  }
  return {};
}

}  // namespace

Srgb systemColorValue(SystemColor name, Appearance appearance) {
  const LightAndDark values = valuesOf(name);
  return appearance == Appearance::Dark ? values.dark : values.light;
}

Srgb resolved(const Color& color, Appearance appearance) {
  if (const auto srgb = color.srgb()) return *srgb;
  Srgb value = systemColorValue(*color.systemColor(), appearance);
  // An alpha of 1 means the system colour's own alpha.
  if (color.alpha() != 1) value.alpha = color.alpha();
  return value;
}

}  // namespace vembrix
