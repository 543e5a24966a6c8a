#pragma once

#include "platform/Color.h"

namespace vembrix {

// Colours that are legible on the menu bar and on a Space's own colour.

/// Returns a text colour for the system's present appearance: lightened when too dark for a dark
/// menu bar, darkened when too light for a light one. A colour of the system is returned unchanged.
/// Main thread.
Color adjustedForeground(const Color& color);

/// The same for a given appearance. Any thread.
Color adjustedForeground(const Color& color, Appearance appearance);

/// Returns black for light colours, white for dark ones and for colours of the system. Any thread.
Color contrastingColor(const Color& color);

}  // namespace vembrix
