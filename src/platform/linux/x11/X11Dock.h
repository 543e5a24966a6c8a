#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "platform/NotificationCenter.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/portable/Dock.h"
#include "platform/portable/EventStream.h"

namespace vembrix {

/// Supplies what a window manager lacks: the events of swipes between Spaces, and a Dock that
/// answers the swipes posted by this process by asking the window manager for the neighbouring
/// desktop, if there is one. Main thread.
class X11Dock {
 public:
  /// Returns the only Dock of the process, created by the first call for the desktop of that call.
  /// Never destroyed: taps and events may outlive main().
  static X11Dock& on(X11Desktop& desktop);

  explicit X11Dock(X11Desktop& desktop);
  X11Dock(const X11Dock&) = delete;
  X11Dock& operator=(const X11Dock&) = delete;

  [[nodiscard]] EventStream& events() { return events_; }

 private:
  using Clock = std::chrono::steady_clock;
  /// A requested desktop that the window manager has not confirmed yet.
  struct Request {
    X11Desktop::SpaceID space = 0;
    Clock::time_point time;
  };

  void move(ISSDirection direction);

  X11Desktop& desktop_;
  Dock dock_;
  EventStream events_;
  std::optional<Request> request_;
  Observation arrival_;
};

}  // namespace vembrix
