#pragma once

#include "platform/Color.h"

namespace vembrix {

// Colours that stay legible on the menu bar and on a Space's own colour.

/// A text colour for the system's present appearance: lightened when it is too
/// dark for a dark menu bar, darkened when too light for a light one. A colour
/// that only the system knows counts as neither. Asks the application's
/// appearance, and so belongs to the main thread.
Color adjustedForeground(const Color& color);

/// The same for a given appearance. Any thread.
Color adjustedForeground(const Color& color, Appearance appearance);

/// Black on light colours, white on dark ones and on those that only the system
/// knows. Any thread.
Color contrastingColor(const Color& color);

/// Dark when the system says so; a system that does not tell counts as light.
/// Main thread.
Appearance systemAppearance();

}  // namespace vembrix
