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
#include "platform/embedded/EmbeddedDesktop.h"
#include "platform/embedded/EmbeddedMainQueue.h"

namespace vembrix {

/// A user, a system and a clock that do anything at all, in any order, on the embedded
/// desktop: the same for the same seed, everywhere. Every event is one function that says
/// what it has done; the table in SignWalk.cpp says how often each comes.
class SignWalk {
 public:
  using SpaceID = EmbeddedDesktop::SpaceID;

  /// Before the program launches. Decides what stands there: Spaces, settings, the
  /// permission. The model is told of what nobody announces.
  SignWalk(unsigned seed, SignModel& model, const LabelWindows& windows);

  /// Does the next event, mostly with the turn of the main queue that follows it, and says
  /// what it was.
  std::string step();

  /// Ends what goes on until it is ended, and waits until nothing waits any more but timers.
  void settle();

 private:
  struct Event {
    int weight;
    /// Whether it leaves a show of all labels alone, which otherwise hardly ever lasts.
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
  /// 0 where there is none.
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
  /// Spaces have come or gone: tells the model where the windows are, unless it was told
  /// when that was announced.
  void spacesChanged();
  void tellPlaces();
  [[nodiscard]] Duration untilNext() const;

  std::mt19937 random_;
  SignModel& model_;
  const LabelWindows& windows_;
  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  Observation announcement_;
  bool wasAnnounced_ = false;
  bool answersWrongly_ = false;
  int calmFor_ = 0;
  int added_ = 0;
};

}  // namespace vembrix
