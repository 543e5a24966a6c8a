#pragma once

#include <cstdint>
#include <memory>

namespace vembrix {

/// The fields of the gesture event that moves between Spaces, by their numbers in the system's
/// events.
namespace dockswipe {

enum Field : int {
  /// Integer: the process that posted the event; 0 for a device. Where the system names a process
  /// for devices, too, 0 for every event that this program did not post.
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

/// Takes the numbered fields of an event. Main thread.
class EventFields {
 public:
  virtual void setIntegerField(int field, std::int64_t value) = 0;
  virtual void setDoubleField(int field, double value) = 0;

 protected:
  ~EventFields() = default;
};

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
