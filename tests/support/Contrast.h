#pragma once

#include <algorithm>
#include <cmath>

#include "platform/Color.h"

namespace vembrix {

// The contrast of text with its background, as WCAG 2 defines it.

/// The lowest contrast at which small text is legible.
inline constexpr double kLegible = 4.5;

inline Srgb over(const Srgb& top, const Srgb& bottom) {
  const auto mix = [&](double a, double b) { return a * top.alpha + b * (1 - top.alpha); };
  return {mix(top.red, bottom.red), mix(top.green, bottom.green), mix(top.blue, bottom.blue), 1};
}

inline double relativeLuminance(const Srgb& color) {
  const auto linear = [](double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// Returns the contrast, from 1 to 21. The background is opaque.
inline double contrast(const Srgb& text, const Srgb& ground) {
  const double a = relativeLuminance(over(text, ground));
  const double b = relativeLuminance(ground);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace vembrix
