#include "labels/SignVisibilityTest.h"

#include <gmock/gmock.h>

#include <chrono>

#include "support/SignTest.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::Each;
using testing::ElementsAre;

// Mission Control

TEST_F(SignVisibilityTest, MissionControlShowsTheOthersFullyAndDrawsThemAnew) {
  beginWithAllLabels();
  const int drawn = label(1).view().displayCount();
  setMissionControl(true);
  EXPECT_THAT(alphas(), all(0, 1));
  EXPECT_EQ(label(1).view().displayCount(), drawn + 1);
  advance(500);
  EXPECT_EQ(label(1).view().displayCount(), drawn + 2) << "at each tick";
  setMissionControl(false);
  EXPECT_THAT(alphas(), atRest());
}

TEST_F(SignVisibilityTest, MissionControlIsNoticedWithin300ms) {
  beginWithAllLabels();
  MissionControlWatcher::shared().start();
  advance(1);
  desktop_.setMissionControl(true);
  advance(298);
  EXPECT_THAT(alphas(), atRest());
  advance(1);
  EXPECT_THAT(alphas(), all(0, 1));
}

TEST_F(SignVisibilityTest, AnActivationInMissionControlShowsAllButTheNewDesktop) {
  beginWithAllLabels();
  setMissionControl(true);
  goTo(2);
  turn();
  EXPECT_THAT(alphas(), ElementsAre(1, 1, 0, 1));
}

TEST_F(SignVisibilityTest, InMissionControlTheActiveLabelIsAt0EvenInAFlash) {
  beginWithAllLabels();
  goTo(1);
  advance(100);
  setMissionControl(true);
  EXPECT_THAT(alphas(), ElementsAre(1, 0, 1, 1));
}

TEST_F(SignVisibilityTest, WithSwipeModeOffMissionControlShowsNoLabels) {
  beginWithAllLabels();
  store_.setShowSignInSwipeMode(false);
  setMissionControl(true);
  EXPECT_THAT(alphas(), Each(0));
}

TEST_F(SignVisibilityTest, MissionControlShowsTheLabelsBeforeAShowHasRaisedThem) {
  beginWithAllLabels();
  controller_->showAll();
  advance(100);
  setMissionControl(true);
  EXPECT_THAT(alphas(), all(0, 1));
}

TEST_F(SignVisibilityTest, AShowGoesOnAfterMissionControl) {
  show();
  setMissionControl(true);
  setMissionControl(false);
  advance(500);
  EXPECT_THAT(alphas(), all(0, 1));
}

// Settings, wake and clock

TEST_F(SignVisibilityTest, TheOpacityIsThereAtTheNextTick) {
  beginWithAllLabels();
  store_.setSignSwipeAlpha(0.3);
  EXPECT_THAT(alphas(), atRest());
  advance(499);
  EXPECT_THAT(alphas(), atRest());
  advance(1);
  EXPECT_THAT(alphas(), all(0, 0.3));
  store_.setSignSwipeAlpha(0);
  advance(500);
  EXPECT_THAT(alphas(), Each(0));
}

TEST_F(SignVisibilityTest, TurningSwipeModeOffHidesAllAtTheNextTickEvenAFadeAndAShow) {
  show();
  advance(250);
  store_.setShowSignInSwipeMode(false);
  label(0).setAlphaValue(0.4);
  advance(149);
  EXPECT_THAT(alphas(), all(0.4, 1));
  advance(1);
  EXPECT_THAT(alphas(), Each(0));
  store_.setShowSignInSwipeMode(true);
  touchLabels();
  advance(1000);
  EXPECT_THAT(alphas(), atRest());
}

TEST_F(SignVisibilityTest, WakingPrimesAtOnce) {
  beginWithAllLabels();
  for (std::size_t place = 0; place < 4; ++place) label(place).setAlphaValue(0.2);
  desktop_.wake();
  EXPECT_THAT(alphas(), all(0.2, 0.78)) << "the active label is not touched";
}

TEST_F(SignVisibilityTest, TheSystemsNoteOfAnotherSpacePrimesAtOnce) {
  beginWithAllLabels();
  label(1).setAlphaValue(0.2);
  NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
  EXPECT_THAT(alphas(), atRest());
}

TEST_F(SignVisibilityTest, TicksThatWereSleptThroughAreOne) {
  beginWithAllLabels();
  const int before = label(1).alphaCount();
  queue_.sleep(std::chrono::hours(8));
  label(1).setAlphaValue(0.2);
  turn();
  EXPECT_EQ(alpha(1), 0.78);
  EXPECT_EQ(label(1).alphaCount(), before + 2);
}

TEST_F(SignVisibilityTest, AShowThatTheMachineSleepsThroughEndsOnWaking) {
  show();
  queue_.sleep(seconds(3600));
  turn();
  advance(1000);
  EXPECT_THAT(alphas(), atRest());
}

}  // namespace
}  // namespace vembrix
