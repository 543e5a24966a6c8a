#include "platform/embedded/EmbeddedWindows.h"

#include <algorithm>
#include <utility>

namespace vembrix {
namespace {

bool contains(std::span<const EmbeddedWindows::SpaceID> spaces, EmbeddedWindows::SpaceID space) {
  return std::ranges::find(spaces, space) != spaces.end();
}

bool joinsAllSpaces(const EmbeddedWindows::Window& window) {
  return (window.collectionBehavior & CanJoinAllSpaces) != 0;
}

bool isIn(const EmbeddedWindows::Window& window, EmbeddedWindows::SpaceID space) {
  return joinsAllSpaces(window) || contains(window.spaces, space);
}

void addOnce(std::vector<EmbeddedWindows::SpaceID>& spaces,
             std::span<const EmbeddedWindows::SpaceID> added) {
  for (const auto space : added) {
    if (!contains(spaces, space)) spaces.push_back(space);
  }
}

}  // namespace

EmbeddedWindows::WindowNumber EmbeddedWindows::add(Window window) {
  window.number = ++lastNumber_;
  window.isOrderedIn = false;
  window.spaces.clear();
  windows_.push_back(std::move(window));
  return lastNumber_;
}

void EmbeddedWindows::remove(WindowNumber number) {
  std::erase_if(windows_, [&](const Window& window) { return window.number == number; });
}

EmbeddedWindows::Window* EmbeddedWindows::find(WindowNumber number) {
  const auto found = std::ranges::find(windows_, number, &Window::number);
  return found == windows_.end() ? nullptr : &*found;
}

void EmbeddedWindows::orderFront(WindowNumber number) {
  const auto found = std::ranges::find(windows_, number, &Window::number);
  if (found == windows_.end()) return;
  Window window = std::move(*found);
  windows_.erase(found);
  const SpaceID active = activeSpace_();
  if (!window.isOrderedIn && window.spaces.empty() && active != 0) window.spaces = {active};
  window.isOrderedIn = true;
  const auto place = std::ranges::find_if(
      windows_, [&](const Window& other) { return other.level <= window.level; });
  windows_.insert(place, std::move(window));
}

void EmbeddedWindows::orderOut(WindowNumber number) {
  if (Window* window = find(number)) window->isOrderedIn = false;
}

void EmbeddedWindows::addToSpaces(std::span<const WindowNumber> windows,
                                  std::span<const SpaceID> spaces) {
  for (const WindowNumber number : windows) {
    if (Window* window = find(number)) addOnce(window->spaces, spaces);
  }
}

void EmbeddedWindows::removeFromSpaces(std::span<const WindowNumber> windows,
                                       std::span<const SpaceID> spaces) {
  for (const WindowNumber number : windows) {
    Window* window = find(number);
    if (!window) continue;
    std::erase_if(window->spaces, [&](SpaceID space) { return contains(spaces, space); });
  }
}

std::vector<EmbeddedWindows::SpaceID> EmbeddedWindows::spacesOf(
    std::span<const WindowNumber> windows, std::span<const SpaceID> allSpaces) const {
  std::vector<SpaceID> spaces;
  for (const WindowNumber number : windows) {
    const auto found = std::ranges::find(windows_, number, &Window::number);
    if (found == windows_.end()) continue;
    addOnce(spaces, joinsAllSpaces(*found) ? allSpaces : std::span<const SpaceID>(found->spaces));
  }
  return spaces;
}

void EmbeddedWindows::move(WindowNumber number, std::vector<SpaceID> spaces) {
  if (Window* window = find(number)) window->spaces = std::move(spaces);
}

void EmbeddedWindows::spaceRemoved(SpaceID space, SpaceID refuge) {
  for (Window& window : windows_) {
    if (std::erase(window.spaces, space) == 0) continue;
    if (window.spaces.empty() && refuge != 0) window.spaces = {refuge};
  }
}

std::vector<EmbeddedWindows::WindowNumber> EmbeddedWindows::shownByMissionControl(
    SpaceID space) const {
  std::vector<WindowNumber> numbers;
  for (const Window& window : windows_) {
    const bool hides = (window.collectionBehavior & Transient) != 0;
    if (window.isOrderedIn && !hides && isIn(window, space)) numbers.push_back(window.number);
  }
  return numbers;
}

std::vector<const EmbeddedWindows::Window*> EmbeddedWindows::onScreen(
    std::span<const SpaceID> spaces) const {
  std::vector<const Window*> shown;
  for (const Window& window : windows_) {
    const bool isThere =
        std::ranges::any_of(spaces, [&](SpaceID space) { return isIn(window, space); });
    if (window.isOrderedIn && isThere) shown.push_back(&window);
  }
  return shown;
}

}  // namespace vembrix
