#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "platform/NotificationCenter.h"
#include "platform/embedded/Dock.h"
#include "platform/embedded/EventStream.h"
#include "platform/linux/X11Desktop.h"

namespace vembrix {

/// What a window manager lacks: the events of swipes between Spaces, and a Dock
/// that answers those which this process posts by asking the window manager for
/// the neighbouring desktop. Not beyond the first and the last. Main thread.
class X11Dock {
 public:
  explicit X11Dock(X11Desktop& desktop);
  X11Dock(const X11Dock&) = delete;
  X11Dock& operator=(const X11Dock&) = delete;

  [[nodiscard]] EventStream& events() { return events_; }

 private:
  using Clock = std::chrono::steady_clock;
  /// A desktop that was asked for and that the window manager has not confirmed.
  struct Request {
    X11Desktop::SpaceID space = 0;
    Clock::time_point time;
  };

  void move(Dock::Direction direction);

  X11Desktop& desktop_;
  Dock dock_;
  EventStream events_;
  std::optional<Request> request_;
  Observation arrival_;
};

}  // namespace vembrix
