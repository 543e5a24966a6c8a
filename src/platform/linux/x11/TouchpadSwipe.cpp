#include "platform/linux/x11/TouchpadSwipe.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vembrix {
namespace {

/// The distance for one Space, in units of pointer movement.
constexpr double kWayOfOneSpace = 400;
/// The distance from which the direction of a swipe is certain.
constexpr double kDecisiveWay = 8;

}  // namespace

TouchpadSwipe::TouchpadSwipe(std::function<void(const GestureEvent&)> send)
    : send_(std::move(send)) {}

void TouchpadSwipe::begin(int fingers, Time time) {
  state_ = fingers == 3 || fingers == 4 ? State::Open : State::Idle;
  lastTime_ = time;
  x_ = 0;
  y_ = 0;
  velocity_ = 0;
}

void TouchpadSwipe::update(const Movement& movement) {
  if (state_ == State::Idle) return;
  x_ += movement.dx;
  y_ += movement.dy;
  // Unsigned, so that it is right when the time wraps around. Events of the same millisecond count
  // as one apart.
  const auto passed = std::max<std::uint32_t>((movement.time - lastTime_).count(), 1);
  lastTime_ = movement.time;
  velocity_ = -movement.dx / kWayOfOneSpace * 1000 / passed;
  if (state_ == State::Sideways) {
    send(dockswipe::Change);
  } else if (std::hypot(x_, y_) >= kDecisiveWay) {
    // The direction is known only now.
    state_ = std::abs(x_) > std::abs(y_) ? State::Sideways : State::Idle;
    if (state_ == State::Sideways) send(dockswipe::Begin);
  }
}

void TouchpadSwipe::end(Ending ending) {
  if (std::exchange(state_, State::Idle) != State::Sideways) return;
  send(ending == Ending::Completed ? dockswipe::End : dockswipe::Cancel);
}

void TouchpadSwipe::send(dockswipe::Phase phase) const {
  GestureEvent event;
  setFields(event, {phase, -x_ / kWayOfOneSpace, velocity_});
  send_(event);
}

}  // namespace vembrix
