#include "platform/embedded/EmbeddedInput.h"

#include <utility>

namespace vembrix {

Token EmbeddedInput::addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) {
  if (!monitorsGiven_) return {};
  auto monitor = std::make_shared<Monitor>(Monitor{mask, std::move(handler)});
  monitors_.push_back(monitor);
  return Token([monitor] { monitor->ended = true; });
}

void EmbeddedInput::send(EventMask type, Target target) {
  if (target == Target::OwnWindow) return;
  if (type == KeyDown && !keysTold_()) return;
  std::erase_if(monitors_, [](const auto& monitor) { return monitor->ended; });
  for (std::size_t i = 0; i < monitors_.size(); ++i) {
    const std::shared_ptr<Monitor> monitor = monitors_[i];
    if (!monitor->ended && (monitor->mask & type) != 0) monitor->handler();
  }
}

void EmbeddedInput::moveMouse(Point location, Target target) {
  mouse_ = location;
  send(MouseMoved, target);
}

}  // namespace vembrix
