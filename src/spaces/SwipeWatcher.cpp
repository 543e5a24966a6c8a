#include "spaces/SwipeWatcher.h"

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
  // Receives every event of the session: this test and the first of swipeMoment() reject all but
  // swipes of the user and of other programs.
  if (event.integerField(dockswipe::SourceProcess) != 0) return;
  const auto moment = swipeMoment(event);
  if (!moment) return;
  switch (moment->phase) {
    case dockswipe::Begin:
    case dockswipe::Change:
      swipeMoved(moment->direction());
      break;
    case dockswipe::End:
    case dockswipe::Cancel:
      swipeFired_ = false;
      break;
  }
}

void SwipeWatcher::swipeMoved(ISSDirection direction) {
  if (swipeFired_) return;
  swipeFired_ = true;
  MainQueue::main().async([weak = weak_from_this(), direction] {
    if (const auto watcher = weak.lock()) watcher->onSwipeBegan(direction);
  });
}

}  // namespace vembrix
