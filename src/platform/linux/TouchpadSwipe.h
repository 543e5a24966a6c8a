#pragma once

#include <chrono>
#include <functional>

#include "platform/DockSwipeEvent.h"
#include "platform/embedded/EventStream.h"

namespace vembrix {

/// Tells a touchpad's swipe gesture as the events of a Dock swipe of a device.
/// Only swipes of three or four fingers that set out sideways are swipes between
/// Spaces. Fingers that move to the left go to the Space on the right, as the
/// contents under them do.
class TouchpadSwipe {
 public:
  /// As the X server counts, from some moment on; it wraps around.
  using Time = std::chrono::duration<std::uint32_t, std::milli>;
  struct Movement {
    Time time{};
    /// Of the fingers, in the units of pointer movement; to the right and down.
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
    /// No swipe that matters.
    Idle,
    /// Which way it goes is still open.
    Open,
    Sideways,
  };

  void send(dockswipe::Phase phase) const;

  std::function<void(const GestureEvent&)> send_;
  State state_ = State::Idle;
  Time lastTime_{};
  // Since the beginning.
  double x_ = 0;
  double y_ = 0;
  /// Spaces per second, to the Space on the right.
  double velocity_ = 0;
};

}  // namespace vembrix
