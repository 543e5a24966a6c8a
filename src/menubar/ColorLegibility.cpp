#include "menubar/ColorLegibility.h"

#include <algorithm>

#include "platform/Application.h"

namespace vembrix {
namespace {

constexpr double kTooDark = 0.25;
constexpr double kTooLight = 0.75;

double lightened(double component) {
  return std::min(1.0, component * 1.5 + 0.2);
}

}  // namespace

Color adjustedForeground(const Color& color) {
  return adjustedForeground(color, systemAppearance());
}

Color adjustedForeground(const Color& color, Appearance appearance) {
  const std::optional<Srgb> srgb = color.srgb();
  if (!srgb) return color;
  const double light = luminance(*srgb);
  if (appearance == Appearance::Dark && light < kTooDark) {
    return Srgb{lightened(srgb->red), lightened(srgb->green), lightened(srgb->blue), srgb->alpha};
  }
  if (appearance == Appearance::Light && light > kTooLight) {
    return Srgb{srgb->red / 2, srgb->green / 2, srgb->blue / 2, srgb->alpha};
  }
  return color;
}

Color contrastingColor(const Color& color) {
  return luminance(color.srgb().value_or(kBlack)) > 0.5 ? kBlack : kWhite;
}

}  // namespace vembrix
