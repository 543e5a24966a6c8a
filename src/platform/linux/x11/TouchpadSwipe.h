#pragma once

#include <chrono>
#include <functional>

#include "platform/DockSwipeEvent.h"
#include "platform/portable/EventStream.h"

namespace vembrix {

/// Converts a touchpad's swipe gesture to the events of a device's Dock swipe. Only swipes of three
/// or four fingers that start sideways count. Fingers that move to the left lead to the Space on
/// the right.
class TouchpadSwipe {
 public:
  /// The X server's time, from an arbitrary start; it wraps around.
  using Time = std::chrono::duration<std::uint32_t, std::milli>;
  struct Movement {
    Time time{};
    /// The fingers' movement to the right and down, in units of pointer movement.
    double dx = 0;
    double dy = 0;
  };
  enum class Ending { Completed, Cancelled };

  explicit TouchpadSwipe(std::function<void(const GestureEvent&)> send);

  void begin(int fingers, Time time);
  void update(const Movement& movement);
  void end(Ending ending);

 private:
  enum class State {
    /// No swipe, or one that does not count.
    Idle,
    /// The direction is not known yet.
    Open,
    Sideways,
  };

  void send(dockswipe::Phase phase) const;

  std::function<void(const GestureEvent&)> send_;
  State state_ = State::Idle;
  Time lastTime_{};
  // Movement since the beginning.
  double x_ = 0;
  double y_ = 0;
  /// Spaces per second, positive to the right.
  double velocity_ = 0;
};

}  // namespace vembrix
