#pragma once

#include <array>
#include <cstdint>

namespace vembrix {

/// The space that a panel reserves, in pixels: the thickness at the left, right, top and bottom
/// edge of the X server's screen, then the first and the last pixel along each edge in the same
/// order. All 0 to reserve none.
using Strut = std::array<std::uint32_t, 12>;

}  // namespace vembrix
