#pragma once

#include <optional>

#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"
#include "platform/ISSDirection.h"

namespace vembrix {

/// One event of a swipe between Spaces.
struct SwipeMoment {
  dockswipe::Phase phase = dockswipe::Begin;
  /// Spaces crossed so far; positive to the right.
  double progress = 0;
  /// Positive to the right.
  double velocity = 0;

  /// That of the velocity or, at rest, of the progress; right where both are 0.
  [[nodiscard]] ISSDirection direction() const {
    return directionOf(velocity != 0 ? velocity : progress);
  }

  bool operator==(const SwipeMoment&) const = default;
};

/// Sets the numbered fields of an event.
void setFields(EventFields& event, const SwipeMoment& moment);

/// Reads the numbered fields of an event; empty for other events and unknown phases. Rejects events
/// that are no swipe by two fields, before it reads any other.
std::optional<SwipeMoment> swipeMoment(const TappedEvent& event);

}  // namespace vembrix
