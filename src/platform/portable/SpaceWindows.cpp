#include "platform/portable/SpaceWindows.h"

#include <algorithm>
#include <utility>

namespace vembrix {
namespace {

bool contains(std::span<const SpaceWindows::SpaceID> spaces, SpaceWindows::SpaceID space) {
  return std::ranges::find(spaces, space) != spaces.end();
}

bool joinsAllSpaces(const SpaceWindows::Window& window) {
  return (window.collectionBehavior & CanJoinAllSpaces) != 0;
}

bool isIn(const SpaceWindows::Window& window, SpaceWindows::SpaceID space) {
  return joinsAllSpaces(window) || contains(window.spaces, space);
}

void addOnce(std::vector<SpaceWindows::SpaceID>& spaces,
             std::span<const SpaceWindows::SpaceID> added) {
  for (const auto space : added) {
    if (!contains(spaces, space)) spaces.push_back(space);
  }
}

}  // namespace

SpaceWindows::WindowNumber SpaceWindows::add(Window window) {
  window.number = ++lastNumber_;
  window.isOrderedIn = false;
  window.spaces.clear();
  windows_.push_back(std::move(window));
  places_.emplace(lastNumber_, std::prev(windows_.end()));
  return lastNumber_;
}

void SpaceWindows::remove(WindowNumber number) {
  const auto found = places_.find(number);
  if (found == places_.end()) return;
  windows_.erase(found->second);
  places_.erase(found);
  notifyWatcher();
}

SpaceWindows::Window* SpaceWindows::find(WindowNumber number) {
  const auto found = places_.find(number);
  return found == places_.end() ? nullptr : &*found->second;
}

const SpaceWindows::Window* SpaceWindows::find(WindowNumber number) const {
  const auto found = places_.find(number);
  return found == places_.end() ? nullptr : &*found->second;
}

void SpaceWindows::orderFront(WindowNumber number) {
  const auto found = places_.find(number);
  if (found == places_.end()) return;
  const auto window = found->second;
  const SpaceID active = activeSpace_();
  if (!window->isOrderedIn && window->spaces.empty() && active != 0) window->spaces = {active};
  window->isOrderedIn = true;
  const auto place = std::ranges::find_if(windows_, [&](const Window& other) {
    return other.number == number || other.level <= window->level;
  });
  windows_.splice(place, windows_, window);
  notifyWatcher();
}

void SpaceWindows::orderOut(WindowNumber number) {
  Window* window = find(number);
  if (!window) return;
  window->isOrderedIn = false;
  notifyWatcher();
}

void SpaceWindows::addToSpaces(std::span<const WindowNumber> windows,
                               std::span<const SpaceID> spaces) {
  for (const WindowNumber number : windows) {
    if (Window* window = find(number)) addOnce(window->spaces, spaces);
  }
  notifyWatcher();
}

void SpaceWindows::removeFromSpaces(std::span<const WindowNumber> windows,
                                    std::span<const SpaceID> spaces) {
  for (const WindowNumber number : windows) {
    Window* window = find(number);
    if (!window) continue;
    std::erase_if(window->spaces, [&](SpaceID space) { return contains(spaces, space); });
  }
  notifyWatcher();
}

std::vector<SpaceWindows::SpaceID> SpaceWindows::spacesOf(
    std::span<const WindowNumber> windows, std::span<const SpaceID> allSpaces) const {
  std::vector<SpaceID> spaces;
  for (const WindowNumber number : windows) {
    const Window* window = find(number);
    if (!window) continue;
    addOnce(spaces, joinsAllSpaces(*window) ? allSpaces : std::span<const SpaceID>(window->spaces));
  }
  return spaces;
}

void SpaceWindows::move(WindowNumber number, std::vector<SpaceID> spaces) {
  Window* window = find(number);
  if (!window) return;
  window->spaces = std::move(spaces);
  notifyWatcher();
}

void SpaceWindows::removeSpaces(const std::function<bool(SpaceID)>& isGone, SpaceID refuge) {
  bool isMoved = false;
  for (Window& window : windows_) {
    if (std::erase_if(window.spaces, isGone) == 0) continue;
    if (window.spaces.empty() && refuge != 0) window.spaces = {refuge};
    isMoved = true;
  }
  if (isMoved) notifyWatcher();
}

std::vector<SpaceWindows::WindowNumber> SpaceWindows::shownByMissionControl(SpaceID space) const {
  std::vector<WindowNumber> numbers;
  for (const Window& window : windows_) {
    const bool hides = (window.collectionBehavior & Transient) != 0;
    if (window.isOrderedIn && !hides && isIn(window, space)) numbers.push_back(window.number);
  }
  return numbers;
}

std::vector<const SpaceWindows::Window*> SpaceWindows::onScreen(
    std::span<const SpaceID> spaces) const {
  std::vector<const Window*> shown;
  for (const Window& window : windows_) {
    const bool isThere =
        std::ranges::any_of(spaces, [&](SpaceID space) { return isIn(window, space); });
    if (window.isOrderedIn && isThere) shown.push_back(&window);
  }
  return shown;
}

bool SpaceWindows::isOnScreen(WindowNumber number, SpaceID space) const {
  const Window* window = find(number);
  return window && window->isOrderedIn && isIn(*window, space);
}

void SpaceWindows::notifyWatcher() const {
  if (watcher_) watcher_();
}

}  // namespace vembrix
