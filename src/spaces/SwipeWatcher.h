#pragma once

#include <functional>
#include <memory>

#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"

namespace vembrix {

/// Reports the beginning and direction of the user's swipes between Spaces. Main thread; owns the
/// tap.
class SwipeWatcher : public std::enable_shared_from_this<SwipeWatcher> {
 public:
  static std::shared_ptr<SwipeWatcher> create();

  /// Called on the main queue, once per swipe, after the event's own handling.
  /// Set before start().
  std::function<void(ISSDirection direction)> onSwipeBegan = [](ISSDirection) {};

  /// Starts to listen; to be called once. Without the permission for Accessibility it logs one line
  /// and never reports a swipe.
  void start();

 private:
  SwipeWatcher() = default;
  void handle(std::uint32_t type, const TappedEvent& event);
  void swipeMoved(ISSDirection direction);

  std::unique_ptr<EventTap> tap_;
  /// Whether the gesture under way has been reported.
  bool swipeFired_ = false;
};

}  // namespace vembrix
