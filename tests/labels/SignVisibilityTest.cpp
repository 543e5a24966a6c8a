#include <gmock/gmock.h>

#include "app/AppDelegate.h"
#include "platform/embedded/faces/RecordingTourOverlay.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::DoubleEq;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kAtRest = 324;
constexpr std::uint64_t kOutOfTheWay = 72;

class SignVisibilityTest : public SignTest {
 protected:
  auto all(double active, double others) {
    return ElementsAre(DoubleEq(active), DoubleEq(others), DoubleEq(others), DoubleEq(others));
  }
  auto atRest() { return all(0, 0.78); }
  /// All labels, shown on purpose; half a second after showAll(), which is 100 ms after a
  /// tick, so that no tick cuts the fade off with which the show ends.
  void show() {
    beginWithAllLabels();
    advance(100);
    controller_->showAll();
    advance(500);
  }
  std::vector<std::uint64_t> behaviors() const {
    std::vector<std::uint64_t> values;
    for (std::size_t place = 0; place < 4; ++place)
      values.push_back(label(place).collectionBehavior());
    return values;
  }
};

// The deliberate show

TEST_F(SignVisibilityTest, TheOthersAreFullyThereHalfASecondAfterTheShowBegins) {
  beginWithAllLabels();
  controller_->showAll();
  advance(499);
  EXPECT_THAT(alphas(), atRest());
  advance(1);
  EXPECT_THAT(alphas(), all(0, 1));
  EXPECT_FALSE(label(1).isAnimating());
}

TEST_F(SignVisibilityTest, TheActiveLabelIsOutOfTheWayAtOnce) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.5);
  controller_->showAll();
  EXPECT_EQ(alpha(0), 0);
  EXPECT_THAT(behaviors(), ElementsAre(kOutOfTheWay, kAtRest, kAtRest, kAtRest));
  EXPECT_THAT(desktop_.windows().shownByMissionControl(space(0)), IsEmpty());
}

TEST_F(SignVisibilityTest, AShowEndsByItselfAfter15sInAFadeOf350ms) {
  show();
  advance(14499);
  EXPECT_THAT(alphas(), all(0, 1));
  advance(1);
  EXPECT_THAT(alphas(), all(0, 1)) << "the fade begins";
  advance(175);
  EXPECT_THAT(alphas(), all(0, 0.5));
  advance(174);
  EXPECT_GT(alpha(1), 0);
  advance(1);
  EXPECT_THAT(alphas(), all(0, 0));
  EXPECT_THAT(behaviors(), Each(kAtRest));
}

TEST_F(SignVisibilityTest, AfterAShowTheNextTickBringsTheLabelsOfTheOthersBack) {
  show();
  advance(14500);
  advance(399);
  EXPECT_THAT(alphas(), all(0, 0));
  advance(1);
  EXPECT_THAT(alphas(), atRest());
  EXPECT_EQ(queue_.pendingCount(), 1U);
}

TEST_F(SignVisibilityTest, ASecondShowRestartsThe15s) {
  show();
  advance(9500);
  controller_->showAll();
  advance(14999);
  EXPECT_THAT(alphas(), all(0, 1));
  EXPECT_FALSE(label(1).isAnimating());
  advance(1 + 350);
  EXPECT_THAT(alphas(), all(0, 0));
}

TEST_F(SignVisibilityTest, WithoutTheSettingThereIsNoShow) {
  store_.setShowSignAfterSelection(false);
  beginWithAllLabels();
  controller_->showAll();
  EXPECT_THAT(behaviors(), Each(kAtRest));
  advance(600);
  EXPECT_THAT(alphas(), atRest());
  EXPECT_EQ(queue_.pendingCount(), 1U);
}

TEST_F(SignVisibilityTest, InMissionControlThereIsNoShow) {
  beginWithAllLabels();
  setMissionControl(true);
  controller_->showAll();
  EXPECT_THAT(behaviors(), Each(kAtRest));
  EXPECT_EQ(queue_.pendingCount(), 2U) << "the ticks, and Mission Control's";
}

TEST_F(SignVisibilityTest, PrimingLeavesAShowAlone) {
  show();
  label(2).setAlphaValue(0.4);
  advance(1000);
  EXPECT_EQ(alpha(2), 0.4);
}

TEST_F(SignVisibilityTest, TouchingAnyLabelEndsTheShow) {
  show();
  moveMouse(10, 10);
  EXPECT_THAT(alphas(), all(0, 1));
  EXPECT_FALSE(label(1).isAnimating());
  touchLabels();
  advance(70);
  EXPECT_THAT(alphas(), all(0, 0.8));
  EXPECT_THAT(behaviors(), Each(kAtRest));
  EXPECT_EQ(queue_.pendingCount(), 1U) << "nobody ends it a second time";
}

TEST_F(SignVisibilityTest, ALabelIsTouchedOnItsLeftAndBottomEdgesOnly) {
  show();
  const Rect frame = label(1).frame();
  moveMouse(frame.x + frame.width, frame.y + frame.height);
  EXPECT_FALSE(label(1).isAnimating());
  moveMouse(frame.x, frame.y);
  EXPECT_TRUE(label(1).isAnimating());
}

TEST_F(SignVisibilityTest, TouchingALabelBeforeItHasRisenEndsTheShowToo) {
  beginWithAllLabels();
  controller_->showAll();
  advance(200);
  touchLabels();
  advance(250);
  EXPECT_LT(alpha(1), 0.78);
  advance(1000);
  EXPECT_THAT(alphas(), atRest()) << "never at 1";
}

TEST_F(SignVisibilityTest, MovesOverOwnWindowsEndNoShow) {
  show();
  desktop_.input().moveMouse({720, 450}, EmbeddedInput::Target::OwnWindow);
  EXPECT_FALSE(label(1).isAnimating());
}

TEST_F(SignVisibilityTest, AnActivationEndsTheShowWithoutAFlash) {
  show();
  goTo(1);
  turn();
  EXPECT_EQ(alpha(0), 0.78);
  EXPECT_EQ(alpha(2), 0.78);
  EXPECT_EQ(alpha(1), 1.0);
  advance(175);
  EXPECT_DOUBLE_EQ(alpha(1), 0.5) << "it fades with the end of the show, in 350 ms";
  advance(175);
  EXPECT_EQ(alpha(1), 0);
  EXPECT_THAT(behaviors(), Each(kAtRest));
}

TEST_F(SignVisibilityTest, ALabelKeepsOutOfTheWayUntilTheShowEnds) {
  show();
  advance(1000);
  EXPECT_EQ(label(0).collectionBehavior(), kOutOfTheWay);
  // Another display's Space becomes the active one for the next show.
  goTo(1);
  EXPECT_EQ(label(0).collectionBehavior(), kAtRest);
  controller_->showAll();
  EXPECT_THAT(behaviors(), ElementsAre(kAtRest, kOutOfTheWay, kAtRest, kAtRest));
}

TEST_F(SignVisibilityTest, EndingNoShowFadesNothing) {
  beginWithAllLabels();
  label(0).setCollectionBehavior(kOutOfTheWay);
  goTo(1);
  EXPECT_EQ(label(0).collectionBehavior(), kOutOfTheWay);
  EXPECT_FALSE(label(2).isAnimating());
}

/// The first show's labels rise with the Space that was active when it began, also where
/// a second one has begun since; then the label of the desktop in which the user is rises
/// with them, until the show ends.
TEST_F(SignVisibilityTest, ARiseKnowsTheSpaceThatWasActiveAtItsOwnShow) {
  beginWithAllLabels();
  controller_->showAll();
  advance(200);
  goTo(1);
  turn();
  advance(100);
  controller_->showAll();
  advance(200);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 1, 1, 1));
  advance(300);
  EXPECT_THAT(alphas(), ElementsAre(1, 1, 1, 1));
  touchLabels();
  advance(350);
  EXPECT_EQ(alpha(1), 0);
}

TEST_F(SignVisibilityTest, ADesktopMayVanishDuringAShow) {
  show();
  desktop_.setSpaceCount(3);
  manager_.reload();
  EXPECT_THAT(alphas(3), ElementsAre(0, 1, 1));
  advance(15000);
  EXPECT_THAT(alphas(3), ElementsAre(0, 0.78, 0.78));
}

TEST_F(SignVisibilityTest, TheActiveDesktopMayVanishBeforeTheLabelsRise) {
  beginWithAllLabels();
  goTo(3);
  advance(600);
  controller_->showAll();
  desktop_.removeSpace(space(3));
  advance(600);
  EXPECT_THAT(alphas(3), ElementsAre(0.78, 0.78, 0));
  EXPECT_EQ(queue_.pendingCount(), 1U);
}

TEST_F(SignVisibilityTest, WithSwipeModeOffAShowLastsUntilTheNextTick) {
  store_.setShowSignInSwipeMode(false);
  beginWithAllLabels();
  EXPECT_THAT(alphas(), Each(0));
  advance(100);
  controller_->showAll();
  advance(500);
  EXPECT_THAT(alphas(), all(0, 1));
  advance(399);
  EXPECT_THAT(alphas(), all(0, 1));
  advance(1);
  EXPECT_THAT(alphas(), Each(0));
}

// Less motion

class CalmSignVisibilityTest : public SignVisibilityTest {
 protected:
  CalmSignVisibilityTest() { EmbeddedApplication::shared().setReducesMotion(true); }
};

TEST_F(CalmSignVisibilityTest, AnArrivalsLabelIsSeenForAsLongAndThenGoesAtOnce) {
  beginWithAllLabels();
  goTo(1);
  turn();
  advance(499);
  EXPECT_DOUBLE_EQ(alpha(1), 0.78);
  EXPECT_FALSE(label(1).isAnimating());
  advance(1);
  EXPECT_EQ(alpha(1), 0);
}

TEST_F(CalmSignVisibilityTest, ALabelThatIsLeftBeforeItGoesIsAtRest) {
  beginWithAllLabels();
  goTo(1);
  turn();
  advance(250);
  goTo(2);
  advance(249);
  EXPECT_THAT(alphas(),
              ElementsAre(DoubleEq(0.78), DoubleEq(0.78), DoubleEq(0.78), DoubleEq(0.78)));
  advance(252);
  EXPECT_THAT(alphas(), ElementsAre(DoubleEq(0.78), DoubleEq(0.78), 0, DoubleEq(0.78)));
}

TEST_F(CalmSignVisibilityTest, ASwipeThatIsGivenUpLeavesNoLabelBehind) {
  beginWithAllLabels();
  goTo(1);
  turn();
  advance(100);
  controller_->handleSwipeBegan(ISSDirection::Right);
  advance(400);
  EXPECT_EQ(alpha(1), 0);
}

TEST_F(CalmSignVisibilityTest, ADesktopMayVanishBeforeItsLabelGoes) {
  beginWithAllLabels();
  goTo(3);
  turn();
  desktop_.removeSpace(space(3));
  advance(1000);
  EXPECT_EQ(labelCount(), 3U);
}

TEST_F(CalmSignVisibilityTest, AShowEndsAtOnce) {
  show();
  touchLabels();
  EXPECT_THAT(alphas(), all(0, 0));
  EXPECT_FALSE(label(1).isAnimating());
}

TEST_F(CalmSignVisibilityTest, ALabelThatIsWavedAwayGoesAtOnce) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.5);
  touchLabels();
  EXPECT_EQ(alpha(0), 0);
  EXPECT_FALSE(label(0).isAnimating());
}

TEST_F(CalmSignVisibilityTest, TheSettingCountsFromTheNextFadeOn) {
  beginWithAllLabels();
  EmbeddedApplication::shared().setReducesMotion(false);
  goTo(1);
  turn();
  EXPECT_TRUE(label(1).isAnimating());
}

// Swipes and arrivals

TEST_F(SignVisibilityTest, ASwipeShowsTheOthersAndLeavesTheActiveLabel) {
  beginWithAllLabels();
  for (std::size_t place = 0; place < 4; ++place) label(place).setAlphaValue(0.1);
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_THAT(alphas(), all(0.1, 0.78));
  EXPECT_FALSE(label(1).isAnimating());
}

TEST_F(SignVisibilityTest, ASwipeLeftFromTheFirstDesktopMakesNoLabelButShowsTheOthers) {
  begin();
  goTo(1);
  goTo(0);
  turn();
  label(1).setAlphaValue(0);
  controller_->handleSwipeBegan(ISSDirection::Left);
  EXPECT_EQ(labelCount(), 2U);
  EXPECT_EQ(alpha(1), 0.78);
}

TEST_F(SignVisibilityTest, ASwipeRightFromTheLastDesktopMakesNoLabel) {
  begin(2);
  goTo(1);
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_EQ(labelCount(), 2U);
}

TEST_F(SignVisibilityTest, WithSwipeModeOffASwipeDoesNothingAndAnArrivalNeverFlashes) {
  store_.setShowSignInSwipeMode(false);
  begin();
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_EQ(labelCount(), 1U);
  goTo(1);
  goTo(0);
  label(0).setAlphaValue(0.5);
  label(1).setAlphaValue(0.5);
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_EQ(alpha(1), 0.5);
  goTo(1);
  turn();
  EXPECT_FALSE(label(1).isAnimating());
  EXPECT_THAT(alphas(2), Each(0));
}

TEST_F(SignVisibilityTest, TheLabelOfTheDesktopArrivedAtFadesOutInHalfASecond) {
  beginWithAllLabels();
  advance(100);
  goTo(2);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0.78, 0.78, 0.78));
  EXPECT_FALSE(label(2).isAnimating()) << "on the next turn";
  turn();
  EXPECT_TRUE(label(2).isAnimating());
  EXPECT_EQ(alpha(2), 0.78);
  advance(125);
  EXPECT_DOUBLE_EQ(alpha(2), 0.585);
  advance(125);
  EXPECT_DOUBLE_EQ(alpha(2), 0.39);
  advance(249);
  EXPECT_GT(alpha(2), 0);
  advance(1);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0.78, 0, 0.78));
}

TEST_F(SignVisibilityTest, ALabelThatIsJustMadeDoesNotFlash) {
  begin();
  goTo(1);
  turn();
  EXPECT_FALSE(label(1).isAnimating());
  EXPECT_EQ(alpha(1), 0);
  EXPECT_EQ(queue_.pendingCount(), 1U);
}

TEST_F(SignVisibilityTest, GoingOnAtOnceFlashesOnlyTheLastDesktop) {
  beginWithAllLabels();
  goTo(1);
  goTo(2);
  turn();
  EXPECT_FALSE(label(1).isAnimating());
  EXPECT_EQ(alpha(1), 0.78);
  EXPECT_TRUE(label(2).isAnimating());
}

TEST_F(SignVisibilityTest, GoingOnDuringAFlashBringsTheLabelLeftBehindBack) {
  beginWithAllLabels();
  goTo(1);
  advance(250);
  goTo(2);
  turn();
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0.78, 0.78, 0.78));
  EXPECT_FALSE(label(1).isAnimating());
}

TEST_F(SignVisibilityTest, ASwipeOrAShowBeforeTheTurnCancelsTheFlash) {
  beginWithAllLabels();
  goTo(1);
  controller_->handleSwipeBegan(ISSDirection::Right);
  turn();
  EXPECT_FALSE(label(1).isAnimating());
  goTo(2);
  controller_->showAll();
  turn();
  EXPECT_FALSE(label(2).isAnimating());
  EXPECT_EQ(alpha(2), 0);
}

TEST_F(SignVisibilityTest, ADesktopMayVanishBeforeAndDuringItsFlash) {
  beginWithAllLabels();
  goTo(3);
  desktop_.removeSpace(space(3));
  turn();
  EXPECT_TRUE(label(2).isAnimating()) << "the desktop that took its place";
  advance(100);
  desktop_.removeSpace(space(2));
  advance(500);
  EXPECT_THAT(alphas(2), ElementsAre(0.78, 0));
  EXPECT_EQ(queue_.pendingCount(), 1U);
}

TEST_F(SignVisibilityTest, TheTargetOfASwipeMayVanish) {
  begin();
  controller_->handleSwipeBegan(ISSDirection::Right);
  desktop_.removeSpace(space(1));
  manager_.reload();
  EXPECT_EQ(labelCount(), 1U);
}

TEST_F(SignVisibilityTest, ASwipeDuringAShowMakesTheLabelOfTheNeighbor) {
  begin();
  controller_->showAll();
  advance(100);
  controller_->handleSwipeBegan(ISSDirection::Right);
  ASSERT_TRUE(hasLabel(space(1)));
  EXPECT_EQ(alpha(1), 0.78);
}

TEST_F(SignVisibilityTest, ASwipeInMissionControlLastsUntilTheNextTick) {
  beginWithAllLabels();
  setMissionControl(true);
  EXPECT_THAT(alphas(), all(0, 1));
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_THAT(alphas(), atRest());
  advance(500);
  EXPECT_THAT(alphas(), all(0, 1));
}

// Waving away

TEST_F(SignVisibilityTest, AFaintLabelCannotBeWavedAway) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.05);
  touchLabels();
  EXPECT_EQ(label(0).finalAlphaValue(), 0.05);
  label(0).setAlphaValue(0.06);
  touchLabels();
  EXPECT_EQ(label(0).finalAlphaValue(), 0);
}

TEST_F(SignVisibilityTest, WavingTheActiveLabelAwayTakes300msFromWhatItHasComeTo) {
  beginWithAllLabels();
  goTo(1);
  advance(250);
  ASSERT_DOUBLE_EQ(alpha(1), 0.39);
  touchLabels();
  advance(150);
  EXPECT_DOUBLE_EQ(alpha(1), 0.195);
  advance(150);
  EXPECT_EQ(alpha(1), 0);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0, 0.78, 0.78)) << "the others stay";
}

TEST_F(SignVisibilityTest, AMouseBesideTheLabelWavesNothingAway) {
  beginWithAllLabels();
  goTo(1);
  turn();
  moveMouse(10, 10);
  advance(400);
  EXPECT_DOUBLE_EQ(alpha(1), 0.156) << "the flash goes on";
}

TEST_F(SignVisibilityTest, ALabelWavedAwayStaysAwayUntilTheNextActivation) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.9);
  touchLabels();
  advance(3000);
  EXPECT_EQ(alpha(0), 0);
  goTo(1);
  EXPECT_EQ(alpha(0), 0.78) << "an activation forgets what was waved away";
}

TEST_F(SignVisibilityTest, AfterAnActivationPrimingKnowsNothingOfWhatWasWavedAway) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.9);
  touchLabels();
  goTo(1);
  label(0).setAlphaValue(0.2);
  desktop_.wake();
  EXPECT_EQ(alpha(0), 0.78);
}

/// Between a new list of Spaces and the news of the new active one, the label waved away
/// is one of the others.
TEST_F(SignVisibilityTest, PrimingLeavesALabelAloneThatWasWavedAway) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.9);
  touchLabels();
  advance(400);
  label(2).setAlphaValue(0.1);
  std::vector<double> primed;
  const Observation observation =
      NotificationCenter::defaultCenter().addObserver(SpaceManager::didChange, [&] {
        desktop_.wake();
        primed = alphas();
      });
  desktop_.addSpace("Main");
  goTo(1);
  EXPECT_THAT(primed, ElementsAre(0, 0.78, 0.78, 0.78));
  EXPECT_EQ(alpha(0), 0.78) << "an activation forgets";
}

TEST_F(SignVisibilityTest, ASwipeShowsWhatWasWavedAwayToo) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.9);
  touchLabels();
  advance(400);
  const Observation observation =
      NotificationCenter::defaultCenter().addObserver(SpaceManager::didChange, [&] {
        controller_->handleSwipeBegan(ISSDirection::Right);
        EXPECT_EQ(alpha(0), 0.78);
      });
  desktop_.addSpace("Main");
  goTo(1);
}

TEST_F(SignVisibilityTest, MissionControlForgetsWhatWasWavedAway) {
  beginWithAllLabels();
  label(0).setAlphaValue(0.9);
  touchLabels();
  setMissionControl(true);
  EXPECT_THAT(alphas(), all(0, 1));
  goTo(1);
  setMissionControl(false);
  advance(500);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0, 0.78, 0.78));
}

TEST_F(SignVisibilityTest, InMissionControlTheMouseWavesNothingAway) {
  beginWithAllLabels();
  setMissionControl(true);
  label(0).setAlphaValue(0.9);
  touchLabels();
  EXPECT_EQ(alpha(0), 0.9);
  EXPECT_FALSE(label(0).isAnimating());
}

TEST_F(SignVisibilityTest, InMissionControlTheMouseEndsNoShow) {
  show();
  setMissionControl(true);
  touchLabels();
  EXPECT_FALSE(label(1).isAnimating());
  setMissionControl(false);
  touchLabels();
  EXPECT_TRUE(label(1).isAnimating());
}

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

// Wired by the program

class WiredSignsTest : public SignTest {
 protected:
  WiredSignsTest() {
    delegate_.applicationDidFinishLaunching();
    queue_.advance(seconds(30));  // past the tour
  }
  GestureEvent swipeBegin(double velocity, std::int64_t process = 0) const {
    GestureEvent event;
    event.setIntegerField(dockswipe::SourceProcess, process);
    event.setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
    event.setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
    event.setIntegerField(dockswipe::GesturePhase, dockswipe::Begin);
    event.setDoubleField(dockswipe::VelocityX, velocity);
    return event;
  }

  AppDelegate delegate_;
};

TEST_F(WiredSignsTest, AfterTheTourEveryDesktopHasItsLabelAndOnlyTheOthersAreSeen) {
  EXPECT_NE(delegate_.signs(), nullptr);
  EXPECT_EQ(labelCount(), 4U);
  EXPECT_THAT(alphas(), ElementsAre(0, 0.78, 0.78, 0.78));
  EXPECT_THAT(RecordingTourOverlay::windows(), IsEmpty());
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_THAT(spacesOf(label(place)), ElementsAre(space(place)));
  }
}

TEST_F(WiredSignsTest, TheHotCornerShowsTheLabels) {
  moveMouse(2, 898);
  advance(500);
  EXPECT_THAT(alphas(), ElementsAre(0, 1, 1, 1));
  moveMouse(100, 898);
  advance(5000);
  EXPECT_THAT(alphas(), ElementsAre(0, 1, 1, 1)) << "until the user touches one";
  touchLabels();
  advance(500);
  EXPECT_NE(alpha(1), 1);
}

TEST_F(WiredSignsTest, ASwipeOfTheUserShowsTheLabelOfTheNeighbor) {
  desktop_.addSpace("Main");
  desktop_.activate(space(3));
  advance(1000);
  ASSERT_EQ(labelCount(), 4U);
  desktop_.events().send(swipeBegin(0.5));
  EXPECT_EQ(labelCount(), 4U) << "after the event's own handling";
  turn();
  EXPECT_EQ(labelCount(), 5U);
  EXPECT_EQ(alpha(4), 0.78);
}

TEST_F(WiredSignsTest, ASwipeToTheLeftLooksToTheLeft) {
  desktop_.addSpace("Main");
  desktop_.moveSpace(space(4), 0);
  manager_.reload();
  ASSERT_FALSE(hasLabel(space(0)));
  desktop_.events().send(swipeBegin(0.5));
  turn();
  EXPECT_FALSE(hasLabel(space(0)));
  desktop_.events().sendToTaps(dockswipe::kDockControl, [&] {
    GestureEvent end = swipeBegin(0);
    end.setIntegerField(dockswipe::GesturePhase, dockswipe::Cancel);
    return end;
  }());
  desktop_.events().send(swipeBegin(-0.5));
  turn();
  EXPECT_TRUE(hasLabel(space(0)));
}

TEST_F(WiredSignsTest, TheProgramsOwnSwipesShowNoLabels) {
  desktop_.addSpace("Main");
  desktop_.activate(space(3));
  advance(1000);
  desktop_.events().send(swipeBegin(0.5, 1));
  turn();
  EXPECT_EQ(labelCount(), 4U);
}

TEST_F(WiredSignsTest, AWholeSwipeEndsWithTheFadeOfTheLabelArrivedAt) {
  desktop_.swipe(ISSDirection::Right);
  advance(200);
  ASSERT_EQ(desktop_.activeSpace(), space(1));
  turn();
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0.78, 0.78, 0.78));
  EXPECT_TRUE(label(1).isAnimating());
  advance(500);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0, 0.78, 0.78));
}

TEST_F(WiredSignsTest, ACallBackAfterTheControllersEndIsNothing) {
  desktop_.input().moveMouse({2, 898});
  desktop_.events().send(swipeBegin(0.5));
  delegate_ = AppDelegate();
  turn();
  queue_.advance(seconds(20));
  EXPECT_EQ(labelCount(), 0U);
}

}  // namespace
}  // namespace vembrix
