#pragma once

namespace vembrix {

/// The direction to a neighbouring Space. Right leads to Spaces later in the list.
enum class ISSDirection { Left = 0, Right = 1 };

/// Returns 1 for right, -1 for left: the sign of a swipe's progress and velocity, and the places to
/// go in the list of Spaces.
constexpr int signOf(ISSDirection direction) {
  return direction == ISSDirection::Right ? 1 : -1;
}

/// Returns the direction of a progress or velocity; right for 0.
constexpr ISSDirection directionOf(double signedValue) {
  return signedValue >= 0 ? ISSDirection::Right : ISSDirection::Left;
}

}  // namespace vembrix
