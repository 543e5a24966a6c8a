#include "labels/SignWalk.h"

#include <algorithm>
#include <vector>

#include "platform/UserDefaults.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

void post(std::string_view name) {
  NotificationCenter::defaultCenter().post(name);
}

}  // namespace

/// The frequency of each event, in about a thousand.
const SignWalk::Event SignWalk::kEvents[] = {
    {80, false, &SignWalk::arrive},
    {25, false, &SignWalk::arriveAndTouch},
    {20, false, &SignWalk::switchByProgram},
    {5, false, &SignWalk::switchDirectly},
    {70, false, &SignWalk::swipe},
    {25, false, &SignWalk::beginSwipe},
    {10, true, &SignWalk::continueSwipe},
    {25, false, &SignWalk::endSwipe},
    {5, true, &SignWalk::loseSwipe},
    {3, true, &SignWalk::disableTaps},

    {20, true, &SignWalk::addDesktop},
    {8, true, &SignWalk::addFullScreen},
    {18, true, &SignWalk::removeSpace},
    {8, false, &SignWalk::removeActiveSpace},
    {10, true, &SignWalk::reorder},
    {4, false, &SignWalk::crowd},
    {4, true, &SignWalk::changeAnnouncing},
    {3, false, &SignWalk::answerWrongly},
    {20, true, &SignWalk::openMenu},
    {5, false, &SignWalk::changeSecondDisplay},
    {8, true, &SignWalk::resizeScreen},
    {15, true, &SignWalk::moveWindow},

    {50, true, &SignWalk::click},
    {20, false, &SignWalk::moveAnywhere},
    {30, false, &SignWalk::touchLabel},
    {15, false, &SignWalk::touchEdge},
    {40, true, &SignWalk::goToCorner},
    {30, true, &SignWalk::leaveCorner},

    {20, true, &SignWalk::rename},
    {15, true, &SignWalk::changeSwitch},
    {20, true, &SignWalk::changeNumber},
    {10, true, &SignWalk::changePalette},
    {6, true, &SignWalk::spoilSetting},
    {4, true, &SignWalk::permit},

    {40, true, &SignWalk::changeMissionControl},
    {8, true, &SignWalk::coverScreen},
    {5, true, &SignWalk::wake},
    {4, true, &SignWalk::sleep},
    {3, false, &SignWalk::tour},
    {1, true, &SignWalk::beginTour},
    {6, true, &SignWalk::endTour},

    {120, true, &SignWalk::waitALittle},
    {90, true, &SignWalk::waitForNext},
    {20, true, &SignWalk::waitUntilJustBeforeNext},
    {20, true, &SignWalk::beLateForNext},
    {10, true, &SignWalk::beBusy},
    {8, true, &SignWalk::waitLong},
};

SignWalk::SignWalk(unsigned seed, SignModel& model, const LabelWindows& windows)
    : random_(seed), model_(model), windows_(windows) {
  // Observed first, before the program moves windows itself.
  announcement_ =
      NotificationCenter::workspace().addObserver(notification::kActiveSpaceDidChange, [this] {
        wasAnnounced_ = true;
        tellPlaces();
      });
  constexpr std::size_t kCounts[] = {4, 4, 3, 2, 1, 0, 9};
  desktop_.setSpaceCount(oneOf(kCounts));
  if (oneIn(3)) desktop_.addDisplay({.identifier = "Second", .frame = {2000, 0, 1920, 1080}});
  constexpr milliseconds kSlides[] = {milliseconds(0), milliseconds(200), milliseconds(200),
                                      milliseconds(700)};
  desktop_.setTransitionTime(oneOf(kSlides));
  desktop_.setTrusted(!oneIn(5));
  UserDefaults& defaults = UserDefaults::standard();
  PropertyList::Array tooMany;
  for (int i = 0; i < 40; ++i) tooMany.emplace_back("walk-" + std::to_string(i % 36));
  const PropertyList recencies[] = {
      {},
      PropertyList::Array{"embedded-space-2", "embedded-space-1", "walk-1"},
      tooMany,
      tooMany,
      PropertyList::Array{"embedded-space-2", 7},
      "embedded-space-1"};
  defaults.set("SpaceHeatRecency", oneOf(recencies));
  const PropertyList names[] = {
      {},
      PropertyList::Dictionary{{"embedded-space-1", "Mail"}, {"embedded-space-2", ""}},
      PropertyList::Dictionary{{"embedded-space-1", "Mail"}, {"embedded-space-2", 2}}};
  defaults.set("SpaceNames", oneOf(names));
}

std::string SignWalk::step() {
  wasAnnounced_ = false;
  std::string what = (this->*draw().happens)();
  if (oneIn(5)) return what + ", and the next thing in the same turn";
  queue_.runPending();
  return what;
}

const SignWalk::Event& SignWalk::draw() {
  if (calmFor_ > 0) {
    calmFor_ -= 1;
  } else if (oneIn(400)) {
    calmFor_ = 100;
  }
  static const int total = [] {
    int sum = 0;
    for (const Event& event : kEvents) sum += event.weight;
    return sum;
  }();
  while (true) {
    int place = static_cast<int>(below(static_cast<std::size_t>(total)));
    const Event* event = kEvents;
    while (place >= event->weight) place -= event++->weight;
    if (event->isCalm || calmFor_ == 0) return *event;
  }
}

void SignWalk::settle() {
  desktop_.setMissionControl(false);
  desktop_.overrideWindowList({});
  desktop_.overrideManagedDisplaySpaces({});
  desktop_.overrideActiveSpace({});
  queue_.advance(seconds(40));
  post(SpaceManager::tourDidEnd);
  queue_.advance(seconds(10));
}

SignWalk::SpaceID SignWalk::anySpace() {
  const auto ids = desktop_.spaceIDs();
  return ids.empty() ? 0 : ids[below(ids.size())];
}

void SignWalk::tellPlaces() {
  for (const RecordingSignWindow* window : RecordingSignWindow::all()) {
    model_.windowMoved(windows_.ownerOf(*window), windows_.spacesOf(*window));
  }
}

void SignWalk::spacesChanged() {
  if (!wasAnnounced_) tellPlaces();
}

// The system

std::string SignWalk::changeMissionControl() {
  const bool isOpen = oneIn(4);
  desktop_.setMissionControl(isOpen);
  return isOpen ? "Mission Control opens" : "Mission Control closes";
}

std::string SignWalk::coverScreen() {
  if (oneIn(2)) {
    desktop_.overrideWindowList({});
    return "the window list is the true one";
  }
  const Rect screen = desktop_.screens().all().back().frame;
  constexpr double kWidths[] = {0.89, 0.9, 1};
  constexpr double kHeights[] = {0.79, 0.8, 1};
  const double width = oneOf(kWidths) * screen.width;
  const double height = oneOf(kHeights) * screen.height;
  const PropertyList bounds[] = {PropertyList::Dictionary{{"Width", width}, {"Height", height}},
                                 PropertyList::Dictionary{{"Width", width}, {"Height", height}},
                                 PropertyList::Dictionary{{"Width", width}},
                                 PropertyList::Dictionary{{"Width", "5000"}, {"Height", "5000"}}};
  const PropertyList window = PropertyList::Dictionary{
      {"kCGWindowOwnerName", oneIn(5) ? "Finder" : "Dock"}, {"kCGWindowBounds", oneOf(bounds)}};
  const PropertyList lists[] = {PropertyList::Array{window}, PropertyList::Array{window},
                                PropertyList::Array{PropertyList::Dictionary{}, window},
                                PropertyList::Array{window, 5}, window};
  desktop_.overrideWindowList(oneOf(lists));
  return "a window covers " + std::to_string(width) + " x " + std::to_string(height);
}

std::string SignWalk::wake() {
  desktop_.wake();
  return "the machine wakes";
}

std::string SignWalk::sleep() {
  queue_.sleep(milliseconds(below(20'000)));
  if (oneIn(2)) queue_.runPending();
  desktop_.wake();
  return "the machine sleeps and wakes";
}

std::string SignWalk::tour() {
  SpaceManager::shared().performAutoTour({});
  return "a tour";
}

std::string SignWalk::beginTour() {
  post(SpaceManager::tourWillStart);
  return "a tour's begin is announced";
}

std::string SignWalk::endTour() {
  post(SpaceManager::tourDidEnd);
  return "a tour's end is announced";
}

// Time

Duration SignWalk::untilNext() const {
  return queue_.nextDue().value_or(queue_.now()) - queue_.now();
}

std::string SignWalk::waitALittle() {
  const Duration time(below(700'000'000));
  queue_.advance(time);
  return std::to_string(time.count()) + " ns pass";
}

std::string SignWalk::waitForNext() {
  const Duration time = untilNext();
  queue_.advance(time);
  return std::to_string(time.count()) + " ns pass, until the next block has run";
}

std::string SignWalk::waitUntilJustBeforeNext() {
  const Duration time = std::max(untilNext() - Duration(1), Duration::zero());
  queue_.advance(time);
  return std::to_string(time.count()) + " ns pass, until just before the next block";
}

std::string SignWalk::beLateForNext() {
  const Duration time = std::max(untilNext(), Duration::zero()) + Duration(below(2));
  queue_.sleep(time);
  return std::to_string(time.count()) + " ns pass, and the next block is due but has not run";
}

std::string SignWalk::beBusy() {
  const Duration time = milliseconds(below(900));
  queue_.sleep(time);
  return std::to_string(time.count()) + " ns pass on a busy machine";
}

std::string SignWalk::waitLong() {
  const Duration time = milliseconds(below(17'000));
  queue_.advance(time);
  return std::to_string(time.count()) + " ns pass";
}

}  // namespace vembrix
