#pragma once

namespace vembrix {

/// The direction to a neighbouring Space. Right leads to Spaces later in the list.
enum class ISSDirection { Left = 0, Right = 1 };

}  // namespace vembrix
