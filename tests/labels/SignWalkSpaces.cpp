// Events that take the user to other Spaces, and those that change the Spaces.

#include "labels/SignWalk.h"
#include "platform/EventTap.h"
#include "platform/UserDefaults.h"
#include "spaces/SpaceManager.h"

namespace vembrix {

using std::chrono::milliseconds;

// Going to other Spaces

std::string SignWalk::arrive() {
  const SpaceID space = anySpace();
  desktop_.activate(space);
  return "the user is in Space " + std::to_string(space);
}

std::string SignWalk::arriveAndTouch() {
  const std::string what = arrive();
  queue_.runPending();
  queue_.advance(milliseconds(below(600)));
  return what + ", and soon " + touchLabel();
}

std::string SignWalk::switchByProgram() {
  const auto& spaces = SpaceManager::shared().spaces();
  if (spaces.empty()) return "no row to click";
  UserDefaults::standard().set("InstantMenuSwitch", oneIn(2));
  const SpaceInfo space = spaces[below(spaces.size())];
  SpaceManager::shared().switchToSpace(space);
  return "the program switches to Space " + std::to_string(space.spaceID);
}

std::string SignWalk::switchDirectly() {
  const SpaceID space = anySpace();
  const char* const display = oneIn(2) ? "Main" : "Second";
  WindowServer::shared().CGSManagedDisplaySetCurrentSpace(1, display, space);
  return "another program makes Space " + std::to_string(space) + " current on " + display;
}

std::string SignWalk::swipe() {
  const bool isRight = oneIn(2);
  desktop_.swipe(isRight ? ISSDirection::Right : ISSDirection::Left);
  return isRight ? "a swipe to the right" : "a swipe to the left";
}

std::string SignWalk::beginSwipe() {
  return sendGesture(dockswipe::Begin);
}
std::string SignWalk::continueSwipe() {
  return sendGesture(dockswipe::Change);
}
std::string SignWalk::endSwipe() {
  return sendGesture(oneIn(2) ? dockswipe::End : dockswipe::Cancel);
}

std::string SignWalk::sendGesture(dockswipe::Phase phase) {
  constexpr double kSpeeds[] = {-1.5, -0.2, 0, 0, 0.2, 1.5};
  const double velocity = oneOf(kSpeeds);
  const double progress = oneOf(kSpeeds);
  const int process = oneIn(6) ? 42 : 0;
  GestureEvent event;
  event.setIntegerField(dockswipe::SourceProcess, process);
  event.setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
  event.setIntegerField(dockswipe::GestureKind, oneIn(10) ? 22 : dockswipe::kDockSwipe);
  event.setIntegerField(dockswipe::GesturePhase, phase);
  event.setDoubleField(dockswipe::VelocityX, velocity);
  event.setDoubleField(dockswipe::Progress, progress);
  desktop_.events().send(event);
  return "a gesture in phase " + std::to_string(phase) + " of velocity " +
         std::to_string(velocity) + " and progress " + std::to_string(progress) + " by process " +
         std::to_string(process);
}

std::string SignWalk::loseSwipe() {
  desktop_.loseSwipes(1);
  return "the Dock loses the next swipe";
}

std::string SignWalk::disableTaps() {
  desktop_.events().disableTaps(oneIn(2) ? EventTap::disabledByTimeout
                                         : EventTap::disabledByUserInput);
  return "the system disables the taps";
}

// Spaces and displays

std::string SignWalk::addSpace(EmbeddedDesktop::SpaceType type) {
  if (desktop_.spaceIDs().size() >= 12) return "no room for another Space";
  const char* const display = oneIn(3) ? "Second" : "Main";
  // Uuids are reused, and with them names and recency.
  added_ += 1;
  const SpaceID space = desktop_.addSpace(display, type, "walk-" + std::to_string(added_ % 64));
  spacesChanged();
  return "Space " + std::to_string(space) + " is added to " + display;
}

std::string SignWalk::addDesktop() {
  return addSpace(EmbeddedDesktop::SpaceType::Desktop);
}
std::string SignWalk::addFullScreen() {
  return "full-screen " + addSpace(EmbeddedDesktop::SpaceType::FullScreen);
}

std::string SignWalk::removeSpace() {
  const SpaceID space = anySpace();
  desktop_.removeSpace(space);
  spacesChanged();
  return "Space " + std::to_string(space) + " is removed";
}

std::string SignWalk::removeActiveSpace() {
  const SpaceID space = desktop_.activeSpace();
  desktop_.removeSpace(space);
  spacesChanged();
  return "the active Space " + std::to_string(space) + " is removed";
}

std::string SignWalk::reorder() {
  const SpaceID space = anySpace();
  const std::size_t place = below(6);
  desktop_.moveSpace(space, place);
  return "Space " + std::to_string(space) + " moves to place " + std::to_string(place);
}

std::string SignWalk::crowd() {
  constexpr std::size_t kCounts[] = {0, 1, 1, 2, 4, 4, 6, 30};
  const std::size_t count = oneOf(kCounts);
  desktop_.setSpaceCount(count);
  spacesChanged();
  return "the first display has " + std::to_string(count) + " Spaces";
}

std::string SignWalk::changeAnnouncing() {
  const bool announces = oneIn(2);
  desktop_.setAnnouncesSpaces(announces);
  return announces ? "new Spaces are announced" : "new Spaces are not announced";
}

std::string SignWalk::answerWrongly() {
  answersWrongly_ = !answersWrongly_;
  if (!answersWrongly_) {
    desktop_.overrideManagedDisplaySpaces({});
    desktop_.overrideActiveSpace({});
    return "the window server tells the truth again";
  }
  switch (below(4)) {
    case 0:
      desktop_.overrideManagedDisplaySpaces(PropertyList());
      return "the window server has no list";
    case 1:
      desktop_.overrideManagedDisplaySpaces(PropertyList::Array{});
      return "the window server lists no display";
    case 2:
      desktop_.overrideActiveSpace(999999);
      return "the window server has an unknown Space active";
    default:
      const SpaceID space = anySpace();
      desktop_.overrideActiveSpace(space);
      return "the window server says that Space " + std::to_string(space) + " is active";
  }
}

std::string SignWalk::openMenu() {
  // Opening the menu often ends wrong answers, which would otherwise last.
  if (answersWrongly_ && oneIn(2)) answerWrongly();
  SpaceManager::shared().reload();
  model_.menuOpened();
  return "the menu opens";
}

std::string SignWalk::changeSecondDisplay() {
  if (desktop_.screens().all().size() > 1) {
    desktop_.removeDisplay("Second");
    spacesChanged();
    return "the second display goes";
  }
  desktop_.addDisplay({.identifier = "Second", .frame = {2000, 100, 1920, 1080}});
  spacesChanged();
  return "a second display comes";
}

std::string SignWalk::resizeScreen() {
  constexpr double kWidths[] = {320, 800, 1440, 1441.5, 5120};
  const double width = oneOf(kWidths);
  desktop_.setDisplayFrame("Main", {0, 0, width, oneIn(2) ? 900.0 : 600.0});
  return "the first screen is " + std::to_string(width) + " wide";
}

std::string SignWalk::moveWindow() {
  const auto& windows = RecordingSignWindow::all();
  if (windows.empty()) return "no window to move";
  const RecordingSignWindow& window = *windows[below(windows.size())];
  std::set<SpaceID> spaces;
  for (std::size_t count = below(4); count > 0; --count) {
    if (const SpaceID space = anySpace()) spaces.insert(space);
  }
  desktop_.windows().move(window.windowNumber(), {spaces.begin(), spaces.end()});
  model_.windowMoved(windows_.ownerOf(window), spaces);
  std::string what = "the label of " + std::to_string(windows_.ownerOf(window)) + " is moved to";
  for (const SpaceID space : spaces) what += ' ' + std::to_string(space);
  return spaces.empty() ? what + " no Space" : what;
}

}  // namespace vembrix
