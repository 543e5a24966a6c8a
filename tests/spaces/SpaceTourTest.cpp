#include <gmock/gmock.h>

#include <optional>

#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"
#include "support/SwipeRecorder.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

class SpaceTourTest : public testing::Test {
 protected:
  void startTour(std::size_t desktops, std::size_t place) {
    desktop_.setSpaceCount(desktops);
    if (desktops > place) desktop_.activate(desktop_.spaceAt(place));
    manager_.reload();
    visited_.clear();
    manager_.performAutoTour([this] { completions_ += 1; });
  }

  static std::vector<std::string> log() { return EmbeddedLog::shared().lines(); }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  SpaceManager& manager_ = SpaceManager::shared();
  SpaceObserver observer_;
  std::vector<std::uint64_t> visited_;
  std::vector<std::string> posts_;
  int completions_ = 0;
  Observation arrival_ =
      NotificationCenter::workspace().addObserver(notification::kActiveSpaceDidChange, [this] {
        observer_.activeSpaceDidChange();
        visited_.push_back(desktop_.activeSpace());
      });
  Observation start_ = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::tourWillStart, [this] { posts_.emplace_back("start"); });
  Observation end_ = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::tourDidEnd, [this] { posts_.emplace_back("end"); });
  SwipeRecorder recorder_;
};

TEST_F(SpaceTourTest, WithOneDesktopOnlyTheCompletionRuns) {
  startTour(1, 0);
  EXPECT_EQ(completions_, 1);
  queue_.advance(seconds(30));
  EXPECT_THAT(posts_, IsEmpty());
  EXPECT_THAT(log(), IsEmpty());
  EXPECT_THAT(recorder_.events(), IsEmpty());
}

TEST_F(SpaceTourTest, WithoutDesktopsOrAnActiveOneOnlyTheCompletionRuns) {
  startTour(0, 0);
  EXPECT_EQ(completions_, 1);
  desktop_.setSpaceCount(3);
  desktop_.overrideActiveSpace(999);
  manager_.reload();
  manager_.performAutoTour([this] { completions_ += 1; });
  EXPECT_EQ(completions_, 2);
  EXPECT_THAT(posts_, IsEmpty());
}

TEST_F(SpaceTourTest, ACompletionIsNotNeeded) {
  startTour(1, 0);
  manager_.performAutoTour({});
  desktop_.setSpaceCount(2);
  manager_.reload();
  manager_.performAutoTour({});
  queue_.advance(seconds(10));
  EXPECT_THAT(posts_, ElementsAre("start", "end"));
}

TEST_F(SpaceTourTest, ThreeDesktopsFromTheSecondAreFourSteps) {
  startTour(3, 1);
  queue_.advance(seconds(10));
  EXPECT_THAT(recorder_.directions(), ElementsAre(1, -1, -1, 1));
  EXPECT_THAT(visited_, ElementsAre(desktop_.spaceAt(2), desktop_.spaceAt(1), desktop_.spaceAt(0),
                                    desktop_.spaceAt(1)));
  EXPECT_THAT(posts_, ElementsAre("start", "end"));
  EXPECT_EQ(completions_, 1);
  EXPECT_THAT(log(), ElementsAre("[Vembrix] tour start: 4 steps", "[Vembrix] tour end"));
}

TEST_F(SpaceTourTest, FromTheFirstDesktopItGoesRightAndThenLeft) {
  startTour(4, 0);
  queue_.advance(seconds(10));
  EXPECT_THAT(recorder_.directions(), ElementsAre(1, 1, 1, -1, -1, -1));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
}

TEST_F(SpaceTourTest, EachStepFollows80msAfterTheArrival) {
  startTour(3, 0);
  queue_.advance(seconds(10));
  // 162 ms for the swipe, 200 ms for the slide, 80 ms for the pause.
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 442, 884, 1326));
}

TEST_F(SpaceTourTest, ItAlwaysAnimates) {
  startTour(2, 0);
  EXPECT_EQ(recorder_.events().size(), 1U) << "an instant swipe would be whole by now";
}

TEST_F(SpaceTourTest, ASwipeWithoutASpaceChangeIsRetriedAfter1200ms) {
  desktop_.loseSwipes(1);
  startTour(2, 0);
  queue_.advance(seconds(10));
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 1200, 1642));
  EXPECT_THAT(log(), ElementsAre("[Vembrix] tour start: 2 steps",
                                 "[Vembrix] tour step 1 retrying swipe", "[Vembrix] tour end"));
}

TEST_F(SpaceTourTest, ARetryThatFailsIsSkippedAfterAnother1200ms) {
  desktop_.loseSwipes(2);
  startTour(2, 0);
  queue_.advance(milliseconds(2400));
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 1200, 2400));
  EXPECT_THAT(log(),
              ElementsAre("[Vembrix] tour start: 2 steps", "[Vembrix] tour step 1 retrying swipe",
                          "[Vembrix] tour step 1 timed out after retry, skipping"));
}

TEST_F(SpaceTourTest, ASlowArrivalDuringTheRetryAdvancesOnce) {
  desktop_.setTransitionTime(milliseconds(1100));
  startTour(2, 0);
  queue_.advance(seconds(19));
  EXPECT_THAT(posts_, ElementsAre("start", "end"));
}

TEST_F(SpaceTourTest, SeveralNotificationsForOneStepAdvanceItOnce) {
  startTour(3, 0);
  queue_.advance(milliseconds(362));
  NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
  queue_.advance(milliseconds(20));
  NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
  queue_.advance(milliseconds(160));
  EXPECT_EQ(recorder_.begins().size(), 2U);
}

TEST_F(SpaceTourTest, FortyDesktopsHitTheHardStopAndNothingFiresAfterwards) {
  startTour(40, 0);
  queue_.advance(seconds(20));
  EXPECT_THAT(posts_, ElementsAre("start", "end"));
  EXPECT_EQ(completions_, 1);
  EXPECT_THAT(log(), ElementsAre("[Vembrix] tour start: 78 steps",
                                 "[Vembrix] tour hard timeout after 20s, forcing end",
                                 "[Vembrix] tour end"));
  const std::size_t swipes = recorder_.begins().size();
  queue_.advance(seconds(30));
  EXPECT_EQ(recorder_.begins().size(), swipes);
  EXPECT_EQ(log().size(), 3U);
  EXPECT_EQ(posts_.size(), 2U);
  EXPECT_EQ(queue_.pendingCount(), 0U);
}

TEST_F(SpaceTourTest, TheHardTimeoutAfterTheEndLogsNothing) {
  startTour(2, 0);
  queue_.advance(seconds(30));
  EXPECT_THAT(log(), ElementsAre("[Vembrix] tour start: 2 steps", "[Vembrix] tour end"));
}

TEST_F(SpaceTourTest, ASpaceRemovedDuringTheTourCostsAStepButEndsIt) {
  startTour(3, 0);
  queue_.advance(milliseconds(500));
  desktop_.removeSpace(desktop_.spaceAt(2));
  queue_.advance(seconds(19));
  EXPECT_THAT(posts_, ElementsAre("start", "end"));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
}

TEST_F(SpaceTourTest, WithoutThePermissionEveryStepTimesOut) {
  desktop_.setTrusted(false);
  startTour(2, 0);
  queue_.advance(seconds(10));
  EXPECT_THAT(
      log(),
      ElementsAre("[Vembrix] tour start: 2 steps", "[Vembrix] tour step 1 retrying swipe",
                  "[Vembrix] tour step 1 timed out after retry, skipping",
                  "[Vembrix] tour step 2 retrying swipe",
                  "[Vembrix] tour step 2 timed out after retry, skipping", "[Vembrix] tour end"));
}

TEST_F(SpaceTourTest, TheStartIsToldBeforeTheFirstSwipe) {
  std::optional<std::size_t> eventsAtStart;
  const Observation observation = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::tourWillStart, [&] { eventsAtStart = recorder_.events().size(); });
  startTour(2, 0);
  EXPECT_EQ(eventsAtStart, 0U);
  EXPECT_EQ(recorder_.events().size(), 1U);
}

TEST_F(SpaceTourTest, TheEndIsLoggedThenToldAndThenTheCompletionRuns) {
  std::vector<std::string> logAtPost;
  const Observation observation =
      NotificationCenter::defaultCenter().addObserver(SpaceManager::tourDidEnd, [&] {
        logAtPost = log();
        EXPECT_EQ(completions_, 0);
      });
  startTour(2, 0);
  queue_.advance(seconds(10));
  EXPECT_THAT(logAtPost, ElementsAre("[Vembrix] tour start: 2 steps", "[Vembrix] tour end"));
  EXPECT_EQ(completions_, 1);
}

/// The first tour retries a step that has the same number as a step of the second tour, whose own
/// time-out then finds it retried.
TEST_F(SpaceTourTest, AStepThatAnOverlappingTourRetriedIsLeftWhenItsOwnTimeIsUp) {
  desktop_.loseSwipes(100);
  startTour(2, 0);
  queue_.advance(milliseconds(500));
  manager_.performAutoTour({});
  queue_.advance(milliseconds(1200));
  EXPECT_THAT(log(), ElementsAre("[Vembrix] tour start: 2 steps", "[Vembrix] tour start: 2 steps",
                                 "[Vembrix] tour step 1 retrying swipe",
                                 "[Vembrix] tour step 1 timed out, advancing"));
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 500, 1200, 1700));
  EXPECT_THAT(recorder_.directions(), ElementsAre(1, 1, 1, -1));
}

TEST_F(SpaceTourTest, ItCanBeTakenAgain) {
  startTour(2, 0);
  queue_.advance(seconds(30));
  manager_.performAutoTour([this] { completions_ += 1; });
  queue_.advance(seconds(30));
  EXPECT_EQ(completions_, 2);
}

}  // namespace
}  // namespace vembrix
