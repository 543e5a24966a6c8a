#pragma once

#include "platform/Color.h"

namespace vembrix {

// What the named colours look like, for systems that do not define them
// themselves. Any thread.

/// As macOS has them, but for the link in light, which is darker by as much as
/// it takes to read it on the window's background.
Srgb systemColorValue(SystemColor name, Appearance appearance);

/// The components of any colour in that appearance.
Srgb resolved(const Color& color, Appearance appearance);

}  // namespace vembrix
