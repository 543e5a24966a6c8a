#include <gmock/gmock.h>

#include "labels/SignVisibilityTest.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

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
  // The next show begins in the active Space of another display.
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

/// Half a second after a show began, all labels rise but that of the Space that was active at its
/// beginning, even if a second show has begun since. So the label of the present desktop may rise,
/// too; it stays until the show ends.
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

}  // namespace
}  // namespace vembrix
