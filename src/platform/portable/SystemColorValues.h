#pragma once

#include "platform/Color.h"

namespace vembrix {

// The components of the named colours, for systems that do not define them. Any thread.

/// Returns macOS's values, except for the light link, which is darkened until it is readable on the
/// window's background.
Srgb systemColorValue(SystemColor name, Appearance appearance);

/// Returns the components of any colour in that appearance.
Srgb resolved(const Color& color, Appearance appearance);

}  // namespace vembrix
