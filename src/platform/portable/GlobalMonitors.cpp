#include "platform/portable/GlobalMonitors.h"

#include <utility>

namespace vembrix {

GlobalMonitors::GlobalMonitors(std::function<void()> maskChanged)
    : maskChanged_(std::move(maskChanged)), self_(std::make_shared<GlobalMonitors*>(this)) {}

Token GlobalMonitors::add(std::uint64_t mask, std::function<void()> handler) {
  auto monitor = std::make_shared<Monitor>(Monitor{mask, std::move(handler)});
  monitors_.push_back(monitor);
  update();
  return Token([monitor, weak = std::weak_ptr(self_)] {
    monitor->ended = true;
    if (const auto self = weak.lock()) (*self)->update();
  });
}

void GlobalMonitors::deliver(EventMask type) {
  telling_ += 1;
  // By index, because a handler may add a monitor. Ended monitors stay until all handlers were
  // called.
  for (std::size_t i = 0; i < monitors_.size(); ++i) {
    const std::shared_ptr<Monitor> monitor = monitors_[i];
    if (!monitor->ended && (monitor->mask & type) != 0) monitor->handler();
  }
  telling_ -= 1;
  if (telling_ == 0) update();
}

void GlobalMonitors::update() {
  if (telling_ == 0) std::erase_if(monitors_, [](const auto& monitor) { return monitor->ended; });
  std::uint64_t mask = 0;
  for (const auto& monitor : monitors_) {
    if (!monitor->ended) mask |= monitor->mask;
  }
  if (std::exchange(mask_, mask) != mask) maskChanged_();
}

}  // namespace vembrix
