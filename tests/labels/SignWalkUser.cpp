// Events of the user: devices, names and settings.

#include "labels/SignWalk.h"
#include "platform/InputMonitor.h"
#include "platform/UserDefaults.h"
#include "spaces/SpaceManager.h"

namespace vembrix {

// The devices

std::string SignWalk::click() {
  constexpr EventMask kTypes[] = {LeftMouseDown, RightMouseDown, OtherMouseDown, KeyDown};
  const EventMask type = oneOf(kTypes);
  const bool isOwn = oneIn(8);
  desktop_.input().send(
      type, isOwn ? EmbeddedInput::Target::OwnWindow : EmbeddedInput::Target::OtherProgram);
  return std::string(type == KeyDown ? "a key press" : "a click") +
         (isOwn ? " in a window of the program's own" : "");
}

std::string SignWalk::moveMouse(std::string_view where, Point place) {
  const bool isOwn = oneIn(10);
  desktop_.input().moveMouse(
      place, isOwn ? EmbeddedInput::Target::OwnWindow : EmbeddedInput::Target::OtherProgram);
  return "the mouse moves " + std::string(where) + " to " + std::to_string(place.x) + ", " +
         std::to_string(place.y) + (isOwn ? " over a window of the program's own" : "");
}

std::string SignWalk::moveAnywhere() {
  return moveMouse("anywhere",
                   {static_cast<double>(below(4000)), static_cast<double>(below(1200))});
}

std::string SignWalk::touchLabel() {
  const Rect screen = model::mainScreen();
  return moveMouse("onto the labels", {screen.x + screen.width / 2, screen.y + screen.height / 2});
}

std::string SignWalk::touchEdge() {
  const auto& windows = RecordingSignWindow::all();
  if (windows.empty()) return "no label's edge to touch";
  const Rect frame = windows[below(windows.size())]->frame();
  const double xs[] = {frame.x - 0.5, frame.x, frame.x + 9, frame.x + frame.width,
                       frame.x + frame.width - 0.5};
  const double ys[] = {frame.y - 0.5, frame.y, frame.y + 9, frame.y + frame.height,
                       frame.y + frame.height - 0.5};
  return moveMouse("to a label's edge", {oneOf(xs), oneOf(ys)});
}

std::string SignWalk::goToCorner() {
  const Rect screen = model::mainScreen();
  constexpr double kDistances[] = {0, 1, 3, 5, 5, 5, 5.5, -1};
  return moveMouse("to the corner",
                   {screen.x + oneOf(kDistances), screen.y + screen.height - oneOf(kDistances)});
}

std::string SignWalk::leaveCorner() {
  const Rect screen = model::mainScreen();
  return moveMouse("out of the corner", {screen.x + 6, screen.y + 6});
}

// Names and settings

std::string SignWalk::rename() {
  const auto& spaces = SpaceManager::shared().spaces();
  if (spaces.empty()) return "no Space to rename";
  constexpr const char* kNames[] = {"",
                                    "   ",
                                    "  Work  ",
                                    "Mail",
                                    "\t\U0001F3E1 Home\n",
                                    "\u05E2\u05D1\u05D5\u05D3\u05D4",
                                    "A name that is much too long for any label to hold it"};
  const char* const name = oneOf(kNames);
  const SpaceInfo space = spaces[below(spaces.size())];
  SpaceManager::shared().setName(name, space);
  model_.renamed(space.uuid, name);
  return "Space " + std::to_string(space.spaceID) + " is called \"" + name + '"';
}

std::string SignWalk::store(std::string_view key, const PropertyList& value) {
  UserDefaults::standard().set(key, value);
  // Some programs write without a notification.
  const bool isTold = !oneIn(6);
  if (isTold) NotificationCenter::defaultCenter().post("PreferencesStoreDidChange");
  return std::string(key) + (isTold ? " is set" : " is set behind the program's back");
}

std::string SignWalk::changeSwitch() {
  constexpr const char* kKeys[] = {"ShowSignInSwipeMode", "ShowSignAfterSelection", "HeatMapSigns"};
  const PropertyList values[] = {true, true, true, true, 1, 1.0, {}, {}, false, 0};
  return store(oneOf(kKeys), oneOf(values));
}

std::string SignWalk::changeNumber() {
  constexpr double kAlphas[] = {0, 0.04, 0.05, 0.06, 0.3, 0.78, 1};
  constexpr double kSizes[] = {1, 40, 160, 400, 5000};
  return oneIn(2) ? store("SignSwipeAlpha", oneOf(kAlphas)) : store("SignTextSize", oneOf(kSizes));
}

std::string SignWalk::changePalette() {
  constexpr const char* kNames[] = {"Ember", "Ice", "Violet", "Mono", "Mono", "ice", "Lava", ""};
  return store("HeatPaletteName", oneOf(kNames));
}

std::string SignWalk::spoilSetting() {
  constexpr const char* kKeys[] = {"ShowSignInSwipeMode", "ShowSignAfterSelection",
                                   "HeatMapSigns",        "SignSwipeAlpha",
                                   "SignTextSize",        "HeatPaletteName"};
  const PropertyList values[] = {{},
                                 "nonsense",
                                 "0",
                                 PropertyList::Array{0.1},
                                 PropertyList::Data{},
                                 PropertyList::Date{},
                                 PropertyList::Dictionary{}};
  return "wrongly " + store(oneOf(kKeys), oneOf(values));
}

std::string SignWalk::permit() {
  const bool isTrusted = !oneIn(6);
  desktop_.setTrusted(isTrusted);
  return isTrusted ? "the permission is given" : "the permission is taken away";
}

}  // namespace vembrix
