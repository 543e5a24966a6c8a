// The input side of the embedded desktop: swipes, Mission Control and the windows on the screen.

#include <algorithm>
#include <utility>

#include "platform/DockSwipeEvent.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"

namespace vembrix {
namespace {

GestureEvent eventOf(const SwipeMoment& moment) {
  GestureEvent event;
  setFields(event, moment);
  return event;
}

/// Describes a window. Its bounds count down from the top left corner of the primary display, whose
/// height is given.
PropertyList windowDescription(const std::string& owner, const Rect& frame, double height) {
  const double top = height - frame.y - frame.height;
  return PropertyList::Dictionary{
      {"kCGWindowOwnerName", owner},
      {"kCGWindowBounds",
       PropertyList::Dictionary{
           {"X", frame.x}, {"Y", top}, {"Width", frame.width}, {"Height", frame.height}}}};
}

}  // namespace

std::unique_ptr<DockSwipeEvent> EmbeddedDesktop::makeSwipeEvent() {
  // Any number except 0, which means a device.
  constexpr std::int64_t kOwnProcess = 1;
  return events_.makeEvent(kOwnProcess, [this] { return trusted_; });
}

std::unique_ptr<EventTap> EmbeddedDesktop::makeTap(EventTap::Handler handler) {
  return trusted_ ? events_.makeTap(std::move(handler)) : nullptr;
}

void EmbeddedDesktop::swipe(ISSDirection direction) {
  const double s = signOf(direction);
  events_.send(eventOf({dockswipe::Begin, s * 0.01, s * 0.5}));
  events_.send(eventOf({dockswipe::Change, s * 0.6, s * 1.2}));
  events_.send(eventOf({dockswipe::End, s * 0.8, s * 1.2}));
}

void EmbeddedDesktop::swipeCompleted(ISSDirection direction, Dock::Arrival arrival) {
  endTransition();
  if (activeDisplay_ >= displays_.size()) return;
  const DisplayState& state = displays_[activeDisplay_];
  const auto current = std::ranges::find(state.spaces, state.current, &Space::id);
  const auto target = current - state.spaces.begin() + signOf(direction);
  if (target < 0 || target >= std::ssize(state.spaces)) return;
  transitionTarget_ = state.spaces[static_cast<std::size_t>(target)].id;
  if (arrival == Dock::Arrival::AtOnce) {
    activate(std::exchange(transitionTarget_, 0));
    return;
  }
  transition_ = MainQueue::main().schedule(transitionTime_, [this] { endTransition(); });
}

void EmbeddedDesktop::endTransition() {
  transition_.reset();
  if (const SpaceID target = std::exchange(transitionTarget_, 0)) activate(target);
}

void EmbeddedDesktop::addWindow(std::string owner, Size size) {
  const double height = displays_.empty() ? 0 : displays_.front().display.frame.height;
  windows_.orderFront(windows_.add({.owner = std::move(owner),
                                    .frame = {0, height - size.height, size.width, size.height},
                                    .spaces = {}}));
}

PropertyList EmbeddedDesktop::windowList() const {
  const double height = displays_.empty() ? 0 : displays_.front().display.frame.height;
  PropertyList::Array list;
  if (missionControl_) {
    for (const DisplayState& state : displays_) {
      list.push_back(windowDescription("Dock", state.display.frame, height));
    }
  }
  for (const SpaceWindows::Window* window : windows_.onScreen(currentSpaces())) {
    list.push_back(windowDescription(window->owner, window->frame, height));
  }
  return list;
}

}  // namespace vembrix
