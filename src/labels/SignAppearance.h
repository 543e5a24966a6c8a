#pragma once

#include "platform/SignWindow.h"
#include "settings/HeatPalette.h"

namespace vembrix {

// The look of a label, by its heat. Any thread.

/// Returns the font of labels. `size` is in points.
Font signFont(double size);

/// Returns the colours of a label. The higher the heat (0 to 1), the closer to the palette's hot
/// colour and the stronger the rim.
SignLook signLook(double heat, const HeatPalette& palette);

/// Interpolates from `a` to `b`, alpha included; `t` is clamped to 0 to 1.
Srgb blend(const Srgb& a, const Srgb& b, double t);

}  // namespace vembrix
