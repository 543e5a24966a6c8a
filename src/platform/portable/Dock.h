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
    /// After the Spaces have slid.
    AfterTransition,
    /// Without a transition, for a very short swipe at high speed.
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
  /// The number of swipes under way. On a busy machine one may begin before the previous one has
  /// ended.
  int begun_ = 0;
};

}  // namespace vembrix
