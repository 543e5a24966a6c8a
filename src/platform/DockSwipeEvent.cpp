#include "platform/DockSwipeEvent.h"

namespace vembrix {
namespace {

std::optional<dockswipe::Phase> phaseOf(std::int64_t number) {
  switch (number) {
    case dockswipe::Begin:
    case dockswipe::Change:
    case dockswipe::End:
    case dockswipe::Cancel:
      return static_cast<dockswipe::Phase>(number);
    default:
      return std::nullopt;
  }
}

}  // namespace

void setFields(EventFields& event, const SwipeMoment& moment) {
  event.setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
  event.setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
  event.setIntegerField(dockswipe::GesturePhase, moment.phase);
  event.setDoubleField(dockswipe::Progress, moment.progress);
  event.setIntegerField(dockswipe::Motion, dockswipe::kHorizontal);
  event.setDoubleField(dockswipe::VelocityX, moment.velocity);
  event.setDoubleField(dockswipe::VelocityY, moment.velocity);
}

std::optional<SwipeMoment> swipeMoment(const TappedEvent& event) {
  if (event.integerField(dockswipe::EventType) != dockswipe::kDockControl) return std::nullopt;
  if (event.integerField(dockswipe::GestureKind) != dockswipe::kDockSwipe) return std::nullopt;
  const auto phase = phaseOf(event.integerField(dockswipe::GesturePhase));
  if (!phase) return std::nullopt;
  return SwipeMoment{.phase = *phase,
                     .progress = event.doubleField(dockswipe::Progress),
                     .velocity = event.doubleField(dockswipe::VelocityX)};
}

}  // namespace vembrix
