#include "watchers/HotCornerWatcher.h"

#include "platform/InputMonitor.h"
#include "platform/MainQueue.h"
#include "platform/Screens.h"

namespace vembrix {

std::shared_ptr<HotCornerWatcher> HotCornerWatcher::create() {
  return std::shared_ptr<HotCornerWatcher>(new HotCornerWatcher());
}

void HotCornerWatcher::start() {
  if (monitor_) return;
  monitor_ = InputMonitor::shared().addGlobalMonitor(MouseMoved, [weak = weak_from_this()] {
    if (const auto watcher = weak.lock()) watcher->handleMouseMoved();
  });
}

void HotCornerWatcher::handleMouseMoved() {
  const Screen* screen = Screens::shared().mainScreen();
  if (!screen) return;
  const Point p = InputMonitor::shared().mouseLocation();
  const Rect& frame = screen->frame;
  const double left = frame.x;
  const double top = frame.y + frame.height;
  const bool inZone =
      left <= p.x && p.x <= left + triggerZoneSize && top - triggerZoneSize <= p.y && p.y <= top;
  if (!inZone) {
    armed_ = true;
    return;
  }
  if (!armed_) return;
  armed_ = false;
  MainQueue::main().async([weak = weak_from_this()] {
    if (const auto watcher = weak.lock()) watcher->onApproach();
  });
}

}  // namespace vembrix
