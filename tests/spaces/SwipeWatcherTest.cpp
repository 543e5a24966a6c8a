#include "spaces/SwipeWatcher.h"

#include <gmock/gmock.h>

#include "platform/DockSwipeEvent.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "spaces/DockSwipe.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNoTap =
    "[Vembrix] SwipeWatcher: failed to create event tap (need Accessibility)";

class SwipeWatcherTest : public testing::Test {
 protected:
  void start() {
    watcher_->onSwipeBegan = [this](ISSDirection direction) { swipes_.push_back(direction); };
    watcher_->start();
  }

  static GestureEvent event(std::int64_t phase, double velocity, double progress,
                            std::int64_t source = 0) {
    GestureEvent event;
    event.setIntegerField(dockswipe::SourceProcess, source);
    event.setIntegerField(dockswipe::EventType, 30);
    event.setIntegerField(dockswipe::GestureKind, 23);
    event.setIntegerField(dockswipe::GesturePhase, phase);
    event.setDoubleField(dockswipe::VelocityX, velocity);
    event.setDoubleField(dockswipe::Progress, progress);
    return event;
  }

  void send(const GestureEvent& event) {
    desktop_.events().send(event);
    queue_.runPending();
  }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  std::shared_ptr<SwipeWatcher> watcher_ = SwipeWatcher::create();
  std::vector<ISSDirection> swipes_;
};

TEST_F(SwipeWatcherTest, AUsersSwipeIsReportedOnceAndItsWay) {
  start();
  desktop_.swipe(ISSDirection::Right);
  queue_.runPending();
  desktop_.swipe(ISSDirection::Left);
  queue_.runPending();
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Right, ISSDirection::Left));
}

TEST_F(SwipeWatcherTest, ZeroVelocityAndNegativeProgressIsNotRight) {
  start();
  send(event(1, 0.0, -0.25));
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Left));
}

TEST_F(SwipeWatcherTest, BothValuesExactlyZeroIsRight) {
  start();
  send(event(2, 0.0, 0.0));
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Right));
}

TEST_F(SwipeWatcherTest, TheVelocityWinsOverTheProgress) {
  start();
  send(event(1, -0.5, 0.5));
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Left));
}

TEST_F(SwipeWatcherTest, AGestureThatNeverEndsSuppressesLaterSwipesUntilAnEndOrCancel) {
  start();
  send(event(1, 1, 0));
  send(event(1, -1, 0));
  send(event(2, -1, 0));
  EXPECT_EQ(swipes_.size(), 1U);
  send(event(8, 0, 0));
  send(event(2, -1, 0));
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Right, ISSDirection::Left));
  send(event(4, 0, 0));
  send(event(1, 1, 0));
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Right, ISSDirection::Left, ISSDirection::Right));
}

TEST_F(SwipeWatcherTest, OtherPhasesMeanNothing) {
  start();
  for (const std::int64_t phase : {0, 3, 16, -1}) send(event(phase, 1, 1));
  EXPECT_THAT(swipes_, IsEmpty());
}

TEST_F(SwipeWatcherTest, AnEventOfAProcessIsIgnored) {
  start();
  send(event(1, 1, 1, 1234));
  animatedDockSwipe(ISSDirection::Right);
  queue_.advance(std::chrono::seconds(1));
  EXPECT_THAT(swipes_, IsEmpty());
}

TEST_F(SwipeWatcherTest, OtherGesturesAndEventsAreIgnored) {
  start();
  GestureEvent other = event(1, 1, 1);
  other.setIntegerField(dockswipe::GestureKind, 8);
  send(other);
  other = event(1, 1, 1);
  other.setIntegerField(dockswipe::EventType, 29);
  send(other);
  EXPECT_THAT(swipes_, IsEmpty());
}

TEST_F(SwipeWatcherTest, TheReportComesAfterTheEventIsHandled) {
  start();
  desktop_.events().send(event(1, 1, 0));
  EXPECT_THAT(swipes_, IsEmpty());
  queue_.runPending();
  EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Right));
}

TEST_F(SwipeWatcherTest, ADisabledTapIsEnabledAgain) {
  start();
  for (const std::uint32_t reason : {EventTap::disabledByTimeout, EventTap::disabledByUserInput}) {
    swipes_.clear();
    desktop_.events().disableTaps(reason);
    send(event(1, 1, 0));
    EXPECT_THAT(swipes_, ElementsAre(ISSDirection::Right));
    send(event(4, 1, 0));
  }
}

TEST_F(SwipeWatcherTest, WithoutThePermissionOneLineIsLoggedAndNothingReported) {
  desktop_.setTrusted(false);
  start();
  EXPECT_THAT(EmbeddedLog::shared().lines(), ElementsAre(kNoTap));
  desktop_.setTrusted(true);
  send(event(1, 1, 0));
  queue_.advance(std::chrono::minutes(10));
  send(event(1, 1, 0));
  EXPECT_THAT(swipes_, IsEmpty());
  EXPECT_EQ(EmbeddedLog::shared().lines().size(), 1U) << "nothing is tried again";
}

TEST_F(SwipeWatcherTest, WithoutThePermissionTheUserIsNotAskedOnceMore) {
  desktop_.setTrusted(false);
  start();
  EXPECT_EQ(desktop_.promptCount(), 0);
}

TEST_F(SwipeWatcherTest, WhereTheSystemGivesNoTapThatIsLoggedToo) {
  desktop_.refuseTaps();
  start();
  send(event(1, 1, 0));
  EXPECT_THAT(swipes_, IsEmpty());
  EXPECT_THAT(EmbeddedLog::shared().lines(), ElementsAre(kNoTap));
}

TEST_F(SwipeWatcherTest, ASecondStartChangesNothing) {
  start();
  watcher_->start();
  send(event(1, 1, 0));
  EXPECT_EQ(swipes_.size(), 1U);
}

TEST_F(SwipeWatcherTest, NothingIsReportedAfterTheWatcherIsGone) {
  start();
  desktop_.events().send(event(1, 1, 0));
  watcher_.reset();
  queue_.runPending();
  desktop_.events().send(event(1, 1, 0));
  EXPECT_THAT(swipes_, IsEmpty());
}

TEST_F(SwipeWatcherTest, OtherEventsAllocateNothing) {
  start();
  const GestureEvent synthetic = event(1, 1, 1, 77);
  GestureEvent other = event(1, 1, 1);
  other.setIntegerField(dockswipe::EventType, 5);
  const GestureEvent following = event(2, 1, 1);
  send(event(1, 1, 1));
  const std::size_t before = allocationCount();
  desktop_.events().send(synthetic);
  desktop_.events().send(other);
  desktop_.events().send(following);
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace
}  // namespace vembrix
