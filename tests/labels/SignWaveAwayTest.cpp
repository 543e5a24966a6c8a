#include <gmock/gmock.h>

#include <vector>

#include "labels/SignVisibilityTest.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

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

/// After a new list of Spaces and before the notification of the new active Space, the dismissed
/// label is one of the others.
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

}  // namespace
}  // namespace vembrix
