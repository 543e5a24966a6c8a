#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/EventTap.h"

namespace vembrix {

/// The direction to a neighbouring Space. Right leads to Spaces later in the list.
enum class ISSDirection { Left = 0, Right = 1 };

/// Returns 1 for right, -1 for left: the sign of a swipe's progress and velocity, and the places to
/// go in the list of Spaces.
constexpr int signOf(ISSDirection direction) {
  return direction == ISSDirection::Right ? 1 : -1;
}

/// Returns the direction of a progress or velocity; right for 0.
constexpr ISSDirection directionOf(double signedValue) {
  return signedValue >= 0 ? ISSDirection::Right : ISSDirection::Left;
}

/// The numbers of the fields of the gesture event that moves between Spaces, and their values.
namespace dockswipe {

enum Field : int {
  /// Integer: the process that posted the event; 0 for a device. On systems that name a process for
  /// devices, too, 0 for every event that this program did not post.
  SourceProcess = 41,
  /// Integer: kDockControl.
  EventType = 55,
  /// Integer: kDockSwipe.
  GestureKind = 110,
  /// Integer: kHorizontal.
  Motion = 123,
  /// Double: Spaces crossed so far; positive to the right.
  Progress = 124,
  /// Double: positive to the right.
  VelocityX = 129,
  VelocityY = 130,
  /// Integer: a Phase.
  GesturePhase = 132,
};

enum Phase : std::int64_t { Begin = 1, Change = 2, End = 4, Cancel = 8 };

inline constexpr std::int64_t kDockControl = 30;
inline constexpr std::int64_t kDockSwipe = 23;
inline constexpr std::int64_t kHorizontal = 1;

}  // namespace dockswipe

/// One event of a swipe between Spaces.
struct SwipeMoment {
  dockswipe::Phase phase = dockswipe::Begin;
  /// Spaces crossed so far; positive to the right.
  double progress = 0;
  /// Positive to the right.
  double velocity = 0;

  /// Returns the direction of the velocity or, at rest, of the progress; right if both are 0.
  [[nodiscard]] ISSDirection direction() const {
    return directionOf(velocity != 0 ? velocity : progress);
  }

  bool operator==(const SwipeMoment&) const = default;
};

/// Takes the numbered fields of an event. Main thread.
class EventFields {
 public:
  virtual void setIntegerField(int field, std::int64_t value) = 0;
  virtual void setDoubleField(int field, double value) = 0;

 protected:
  ~EventFields() = default;
};

/// Sets the numbered fields of an event.
void setFields(EventFields& event, const SwipeMoment& moment);

/// Reads the numbered fields of an event; empty for other events and unknown phases. Rejects events
/// that are no swipe by two fields, before it reads any other.
std::optional<SwipeMoment> swipeMoment(const TappedEvent& event);

/// A synthetic gesture event. Main thread. A posted event has no effect without the permission for
/// Accessibility.
class DockSwipeEvent : public EventFields {
 public:
  /// Creates an event without source and fields; null when the system refuses.
  static std::unique_ptr<DockSwipeEvent> create();

  virtual ~DockSwipeEvent() = default;

  /// Posts the event, as it is now, into the session's event stream.
  virtual void post() = 0;
};

}  // namespace vembrix
