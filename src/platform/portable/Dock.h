#pragma once

#include <functional>

#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"

namespace vembrix {

/// Reads Dock swipes by their fields and decides, as the system's Dock does, whether each moves the
/// user to the neighbouring Space: by its distance or, for a flick, by its final speed. One swipe
/// moves at most one Space. The caller checks for the ends of the list of Spaces. Main thread.
class Dock {
 public:
  enum class Arrival {
    /// The Spaces slide.
    AfterTransition,
    /// A very short swipe at high speed has no transition.
    AtOnce,
  };
  using Mover = std::function<void(ISSDirection, Arrival)>;

  explicit Dock(Mover mover);

  /// Called when a swipe begins; may be empty.
  void onBegin(std::function<void()> handler) { onBegin_ = std::move(handler); }

  void handle(const TappedEvent& event);

 private:
  void end(double progress, double velocity);

  Mover mover_;
  std::function<void()> onBegin_;
  /// Number of swipes under way: on a busy machine the next may begin before the last has ended.
  int begun_ = 0;
};

}  // namespace vembrix
