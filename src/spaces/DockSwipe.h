#pragma once

#include "spaces/ISSDirection.h"

namespace vembrix {

// A swipe on the trackpad between Spaces, imitated by synthetic events: one
// swipe crosses one Space. Main thread; an event that the system does not give
// is left out.

/// A swipe with the system's transition. It begins at once and takes 162 ms on
/// the main queue.
void animatedDockSwipe(ISSDirection direction);

/// A swipe without a visible transition: posted whole when this returns.
void instantDockSwipe(ISSDirection direction);

}  // namespace vembrix
