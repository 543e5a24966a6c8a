#include "platform/embedded/desktop/EmbeddedInput.h"

#include <utility>

namespace vembrix {

Token EmbeddedInput::addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) {
  if (!monitorsGiven_) return {};
  return monitors_.add(mask, std::move(handler));
}

void EmbeddedInput::send(EventMask type, Target target) {
  if (target == Target::OwnWindow) return;
  if (type == KeyDown && !keysTold_()) return;
  monitors_.deliver(type);
}

void EmbeddedInput::moveMouse(Point location, Target target) {
  mouse_ = location;
  send(MouseMoved, target);
}

}  // namespace vembrix
