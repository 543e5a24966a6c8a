#include <gmock/gmock.h>

#include "labels/SignVisibilityTest.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using testing::DoubleEq;
using testing::Each;
using testing::ElementsAre;

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

}  // namespace
}  // namespace vembrix
