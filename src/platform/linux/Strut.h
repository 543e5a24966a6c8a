#pragma once

#include <array>
#include <cstdint>

namespace vembrix {

/// What a panel keeps free of windows: left, right, top and bottom, each from that edge
/// of the X server's screen, then the first and the last pixel along each of these edges,
/// in the same order. In pixels; all 0 for nothing.
using Strut = std::array<std::uint32_t, 12>;

}  // namespace vembrix
