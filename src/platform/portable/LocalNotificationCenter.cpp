#include "platform/portable/LocalNotificationCenter.h"

#include <utility>

namespace vembrix {

void LocalNotificationCenter::Channel::sweep() {
  if (posts > 0) return;
  std::erase_if(observers, [](const auto& observer) { return observer->ended; });
}

Observation LocalNotificationCenter::addObserver(std::string_view name,
                                                 std::function<void()> handler) {
  auto found = channels_.find(name);
  if (found == channels_.end()) {
    found = channels_.emplace(std::string(name), std::make_shared<Channel>()).first;
  }
  auto observer = std::make_shared<Observer>(Observer{std::move(handler)});
  found->second->observers.push_back(observer);
  return Observation([observer, channel = std::weak_ptr(found->second)] {
    observer->ended = true;
    if (const auto live = channel.lock()) live->sweep();
  });
}

void LocalNotificationCenter::post(std::string_view name) {
  const auto found = channels_.find(name);
  if (found == channels_.end()) return;
  const std::shared_ptr<Channel> channel = found->second;
  const std::size_t count = channel->observers.size();
  channel->posts += 1;
  for (std::size_t i = 0; i < count; ++i) {
    // Held for the call: a handler may drop its own observation.
    const std::shared_ptr<Observer> observer = channel->observers[i];
    if (!observer->ended) observer->handler();
  }
  channel->posts -= 1;
  channel->sweep();
}

}  // namespace vembrix
