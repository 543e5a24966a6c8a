#pragma once

#include "platform/SignWindow.h"
#include "settings/HeatPalette.h"

namespace vembrix {

// How a label looks, by its heat. Any thread.

/// The font of labels at that size, in points.
Font signFont(double size);

/// The colours of a label of that heat (0 to 1): the warmer, the nearer to the
/// palette's hot colour, and the stronger its rim.
SignLook signLook(double heat, const HeatPalette& palette);

/// The colour at `t` (clamped to 0 to 1) of the way from `a` to `b`, alpha included.
Srgb blend(const Srgb& a, const Srgb& b, double t);

}  // namespace vembrix
