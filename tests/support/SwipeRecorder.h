#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {

/// Records the Dock-swipe events of the session with their times.
class SwipeRecorder {
 public:
  struct Event {
    /// The time since the recorder was created.
    std::int64_t milliseconds = 0;
    std::int64_t phase = 0;
    double progress = 0;
    double velocity = 0;
    double velocityY = 0;
    std::int64_t motion = 0;

    bool operator==(const Event&) const = default;
  };

  SwipeRecorder() {
    tap_ = EmbeddedDesktop::shared().events().makeTap(
        [this](std::uint32_t, const TappedEvent& event) { record(event); });
    tap_->enable();
  }

  const std::vector<Event>& events() const { return events_; }

  /// Returns the times at which swipes began.
  std::vector<std::int64_t> begins() const {
    std::vector<std::int64_t> times;
    for (const Event& event : events_) {
      if (event.phase == dockswipe::Begin) times.push_back(event.milliseconds);
    }
    return times;
  }

  /// Returns the directions of the swipes that began: 1 for right, -1 for left.
  std::vector<int> directions() const {
    std::vector<int> signs;
    for (const Event& event : events_) {
      if (event.phase == dockswipe::Begin) signs.push_back(event.progress > 0 ? 1 : -1);
    }
    return signs;
  }

 private:
  void record(const TappedEvent& event) {
    const Duration passed = EmbeddedMainQueue::shared().now() - start_;
    events_.push_back(
        {std::chrono::duration_cast<std::chrono::milliseconds>(passed).count(),
         event.integerField(dockswipe::GesturePhase), event.doubleField(dockswipe::Progress),
         event.doubleField(dockswipe::VelocityX), event.doubleField(dockswipe::VelocityY),
         event.integerField(dockswipe::Motion)});
  }

  Duration start_ = EmbeddedMainQueue::shared().now();
  std::vector<Event> events_;
  std::unique_ptr<EventTap> tap_;
};

}  // namespace vembrix
