#include "spaces/SwipeWatcher.h"

#include "platform/DockSwipeEvent.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"

namespace vembrix {

std::shared_ptr<SwipeWatcher> SwipeWatcher::create() {
  return std::shared_ptr<SwipeWatcher>(new SwipeWatcher());
}

void SwipeWatcher::start() {
  if (tap_) return;
  // The tap does not outlive the watcher, so a plain pointer is safe and the cheapest per event.
  tap_ = EventTap::create(
      [this](std::uint32_t type, const TappedEvent& event) { handle(type, event); });
  if (!tap_) {
    logLine("SwipeWatcher: failed to create event tap (need Accessibility)");
    return;
  }
  tap_->enable();
}

void SwipeWatcher::handle(std::uint32_t type, const TappedEvent& event) {
  if (type == EventTap::disabledByTimeout || type == EventTap::disabledByUserInput) {
    if (tap_) tap_->enable();
    return;
  }
  // Receives every event of the session: these three tests reject all but swipes of the user and of
  // other programs.
  if (event.integerField(dockswipe::SourceProcess) != 0) return;
  if (event.integerField(dockswipe::EventType) != dockswipe::kDockControl) return;
  if (event.integerField(dockswipe::GestureKind) != dockswipe::kDockSwipe) return;
  switch (event.integerField(dockswipe::GesturePhase)) {
    case dockswipe::Begin:
    case dockswipe::Change:
      swipeMoved(event);
      break;
    case dockswipe::End:
    case dockswipe::Cancel:
      swipeFired_ = false;
      break;
    default:
      break;
  }
}

void SwipeWatcher::swipeMoved(const TappedEvent& event) {
  if (swipeFired_) return;
  swipeFired_ = true;
  const double velocity = event.doubleField(dockswipe::VelocityX);
  const double progress = event.doubleField(dockswipe::Progress);
  const bool isRight = (velocity != 0.0 ? velocity : progress) >= 0;
  MainQueue::main().async([weak = weak_from_this(), isRight] {
    if (const auto watcher = weak.lock()) watcher->onSwipeBegan(isRight);
  });
}

}  // namespace vembrix
