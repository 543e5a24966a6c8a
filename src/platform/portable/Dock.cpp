#include "platform/portable/Dock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vembrix {
namespace {

/// The progress from which a swipe moves the user.
constexpr double kEnoughProgress = 0.5;
/// The speed from which a shorter swipe (a flick) moves the user.
constexpr double kFlickVelocity = 1.0;
constexpr double kNoProgress = 0.0001;
constexpr double kInstantVelocity = 100.0;

}  // namespace

Dock::Dock(Mover mover) : mover_(std::move(mover)) {}

void Dock::handle(const TappedEvent& event) {
  const auto moment = swipeMoment(event);
  if (!moment) return;
  switch (moment->phase) {
    case dockswipe::Begin:
      begun_ += 1;
      if (onBegin_) onBegin_();
      break;
    case dockswipe::End:
      if (begun_ > 0) {
        begun_ -= 1;
        end(moment->progress, moment->velocity);
      }
      break;
    case dockswipe::Cancel:
      begun_ = std::max(begun_ - 1, 0);
      break;
    case dockswipe::Change:
      break;
  }
}

void Dock::end(double progress, double velocity) {
  if (std::abs(progress) < kNoProgress) {
    if (std::abs(velocity) < kInstantVelocity) return;
    mover_(directionOf(velocity), Arrival::AtOnce);
    return;
  }
  const ISSDirection direction = directionOf(progress);
  const double onwards = progress > 0 ? velocity : -velocity;
  const bool completes = onwards >= kFlickVelocity ||
                         (std::abs(progress) >= kEnoughProgress && onwards > -kFlickVelocity);
  if (completes) mover_(direction, Arrival::AfterTransition);
}

}  // namespace vembrix
