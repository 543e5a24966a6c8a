#pragma once

#include "platform/DockSwipeEvent.h"

namespace vembrix {

// Synthetic trackpad swipes between Spaces, each a series of DockSwipeEvents that crosses one
// Space. Main thread; an event that the system refuses is left out.

/// Posts a swipe with the system's transition. Starts at once and takes 162 ms on the main queue.
void animatedDockSwipe(ISSDirection direction);

/// Posts a whole swipe without a visible transition before it returns.
void instantDockSwipe(ISSDirection direction);

}  // namespace vembrix
