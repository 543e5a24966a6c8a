#pragma once

#include <functional>

#include "platform/EventTap.h"

namespace vembrix {

/// Reads Dock swipes by their fields and decides, as the system's Dock does,
/// whether each moves the user to the neighbouring Space: by how far it went or,
/// for a flick, by its speed when it ends. One swipe moves one Space at most.
/// Where the list of Spaces ends is the mover's business. Main thread.
class Dock {
 public:
  enum class Direction { Left = -1, Right = 1 };
  enum class Arrival {
    /// The Spaces slide.
    AfterTransition,
    /// A swipe of next to no way at a great speed leaves nothing to slide.
    AtOnce,
  };
  using Mover = std::function<void(Direction, Arrival)>;

  explicit Dock(Mover mover);

  /// Called when a swipe begins; may be empty.
  void onBegin(std::function<void()> handler) { onBegin_ = std::move(handler); }

  void handle(const TappedEvent& event);

 private:
  void end(double progress, double velocity);

  Mover mover_;
  std::function<void()> onBegin_;
  /// Swipes that have begun and not ended: on a busy machine the next may begin before
  /// the last one's end.
  int begun_ = 0;
};

}  // namespace vembrix
