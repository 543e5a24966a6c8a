#include "labels/SignAppearance.h"

#include <algorithm>

namespace vembrix {
namespace {

/// Colder labels have no rim.
constexpr double kNoticeableHeat = 0.05;
/// In points.
constexpr double kRimAtFullHeat = 4;
constexpr double kThinnestRim = 2;
/// The luminance from which a fill gets black text.
constexpr double kLightFill = 0.6;

}  // namespace

Font signFont(double size) {
  return {.weight = Font::Weight::Heavy, .size = size};
}

Srgb blend(const Srgb& a, const Srgb& b, double t) {
  // NaN counts as 0.
  const double part = t > 0 ? std::min(t, 1.0) : 0;
  const auto between = [part](double from, double to) { return from + part * (to - from); };
  return {between(a.red, b.red), between(a.green, b.green), between(a.blue, b.blue),
          between(a.alpha, b.alpha)};
}

SignLook signLook(double heat, const HeatPalette& palette) {
  SignLook look;
  look.fill = blend(palette.cold.srgb(), palette.hot.srgb(), heat);
  look.textColor = luminance(look.fill) > kLightFill ? kBlack : kWhite;
  look.rim = palette.rim.srgb();
  look.rim.alpha = heat;
  look.borderWidth = heat > kNoticeableHeat ? std::max(kRimAtFullHeat * heat, kThinnestRim) : 0;
  return look;
}

}  // namespace vembrix
