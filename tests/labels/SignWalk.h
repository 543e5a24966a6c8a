#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "labels/LabelWindows.h"
#include "labels/SignModel.h"
#include "platform/DockSwipeEvent.h"
#include "platform/NotificationCenter.h"
#include "platform/PropertyList.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {

/// A random walk of user, system and clock on the embedded desktop, the same for equal seeds on
/// every platform. Each event is a function that returns its description; the table in SignWalk.cpp
/// holds their frequencies.
class SignWalk {
 public:
  using SpaceID = EmbeddedDesktop::SpaceID;

  /// To be created before the program launches. Chooses Spaces, settings and permission, and passes
  /// changes without an event to the model.
  SignWalk(unsigned seed, SignModel& model, const LabelWindows& windows);

  /// Performs the next event, usually with the following turn of the main queue, and returns its
  /// description.
  std::string step();

  /// Ends all lasting events and waits until only timers are left.
  void settle();

 private:
  struct Event {
    int weight;
    /// Whether it never interrupts a show of all labels, which otherwise hardly ever lasts to its
    /// end.
    bool isCalm;
    std::string (SignWalk::*happens)();
  };
  static const Event kEvents[];

  // Chance
  std::size_t below(std::size_t count) { return random_() % count; }
  bool oneIn(std::size_t count) { return below(count) == 0; }
  template <typename T, std::size_t size>
  const T& oneOf(const T (&values)[size]) {
    return values[below(size)];
  }
  /// 0 if there is none.
  SpaceID anySpace();
  const Event& draw();

  // Going to other Spaces
  std::string arrive();
  std::string arriveAndTouch();
  std::string switchByProgram();
  std::string switchDirectly();
  std::string swipe();
  std::string beginSwipe();
  std::string continueSwipe();
  std::string endSwipe();
  std::string loseSwipe();
  std::string disableTaps();
  // Spaces and displays
  std::string addDesktop();
  std::string addFullScreen();
  std::string removeSpace();
  std::string removeActiveSpace();
  std::string reorder();
  std::string crowd();
  std::string changeAnnouncing();
  std::string answerWrongly();
  std::string openMenu();
  std::string changeSecondDisplay();
  std::string resizeScreen();
  std::string moveWindow();
  // The devices
  std::string click();
  std::string moveAnywhere();
  std::string touchLabel();
  std::string touchEdge();
  std::string goToCorner();
  std::string leaveCorner();
  // Names and settings
  std::string rename();
  std::string changeSwitch();
  std::string changeNumber();
  std::string changePalette();
  std::string spoilSetting();
  std::string permit();
  // The system
  std::string changeMissionControl();
  std::string coverScreen();
  std::string wake();
  std::string sleep();
  std::string tour();
  std::string beginTour();
  std::string endTour();
  // Time
  std::string waitALittle();
  std::string waitForNext();
  std::string waitUntilJustBeforeNext();
  std::string beLateForNext();
  std::string beBusy();
  std::string waitLong();

  std::string sendGesture(dockswipe::Phase phase);
  std::string store(std::string_view key, const PropertyList& value);
  std::string moveMouse(std::string_view where, Point place);
  std::string addSpace(EmbeddedDesktop::SpaceType type);
  /// Passes the windows' Spaces to the model after Spaces were added or removed, unless an event
  /// has done so.
  void spacesChanged();
  void tellPlaces();
  [[nodiscard]] Duration untilNext() const;

  std::mt19937 random_;
  SignModel& model_;
  const LabelWindows& windows_;
  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  Observation announcement_;
  bool wasAnnounced_ = false;
  bool answersWrongly_ = false;
  int calmFor_ = 0;
  int added_ = 0;
};

}  // namespace vembrix
