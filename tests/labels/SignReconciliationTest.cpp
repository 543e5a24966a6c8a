#include <gmock/gmock.h>

#include "labels/SignPlacementTest.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Array = PropertyList::Array;
using Kind = TestDesktop::WindowSpacesCall::Kind;

// The label that a swipe makes

TEST_F(SignPlacementTest, ASwipeBornLabelIsAddedToItsSpaceAndThenTakenOutOfTheActiveOne) {
  begin();
  watchCalls();
  controller_->handleSwipeBegan(ISSDirection::Right);
  const auto number = label(1).windowNumber();
  EXPECT_THAT(calls_, ElementsAre(Call{Kind::Add, {number}, {space(1)}},
                                  Call{Kind::Remove, {number}, {space(0)}}));
  EXPECT_THAT(spacesOf(label(1)), ElementsAre(space(1)));
  EXPECT_TRUE(label(1).isOrderedIn());
  EXPECT_EQ(alpha(1), 0.78);
  EXPECT_EQ(label(1).view().text(), "Desktop 2");
}

TEST_F(SignPlacementTest, WithoutTheMeansToMoveWindowsLabelsAreMadeOnlyWhereTheyBelong) {
  desktop_.setCanPlaceWindows(false);
  begin();
  controller_->handleSwipeBegan(ISSDirection::Right);
  turn();
  EXPECT_EQ(labelCount(), 1U) << "the neighbour's would be born in the active Space, and stay";
  goTo(1);
  EXPECT_EQ(labelCount(), 2U);
  EXPECT_EQ(label(1).view().text(), "Desktop 2");
}

TEST_F(SignPlacementTest, WithoutTheMeansToMoveWindowsAStrayLabelIsNotReportedOverAndOver) {
  begin();
  desktop_.setCanPlaceWindows(false);
  moveLabel(label(0), {space(1)});
  watchCalls();
  for (int i = 0; i < 3; ++i) reconcile();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(EmbeddedLog::shared().lines(), testing::Not(testing::Contains(HasSubstr("re-pin"))));
}

TEST_F(SignPlacementTest, ASwipeBornLabelHasTheHeatOfADesktopThatIsNotActive) {
  defaults_.set("SpaceHeatRecency", Array{"embedded-space-1", "embedded-space-2"});
  begin();
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_EQ(label(1).view().look().borderWidth, 4) << "the most recent but for the active one";
  EXPECT_DOUBLE_EQ(label(0).view().look().rim.alpha, 1);
}

TEST_F(SignPlacementTest, ASwipeToADesktopWithALabelAsksTheWindowServerNothing) {
  beginWithAllLabels();
  watchCalls();
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(labelCount(), 4U);
}

TEST_F(SignPlacementTest, ASwipePassesOverFullScreenSpaces) {
  begin(1);
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.addSpace("Main");
  manager_.reload();
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_FALSE(hasLabel(space(1)));
  EXPECT_TRUE(hasLabel(space(2)));
}

// Reconciliation

TEST_F(SignPlacementTest, ALabelInTwoSpacesIsRemovedFromTheOtherAndLogged) {
  beginWithAllLabels();
  moveLabel(label(2), {space(2), space(3)});
  watchCalls();
  const auto& window = *RecordingSignWindow::inSpace(space(2)).front();
  reconcile();
  EXPECT_THAT(log(), ElementsAre("[Vembrix] sign for space 3 found on [3, 4] — re-pinning"));
  EXPECT_EQ(count(Kind::Add), 0);
  EXPECT_THAT(calls_,
              testing::Contains(Call{Kind::Remove, {window.windowNumber()}, {space(3)}}).Times(1));
  EXPECT_THAT(spacesOf(window), ElementsAre(space(2)));
}

TEST_F(SignPlacementTest, ALabelInAnotherSpaceAloneIsAddedToItsOwnAndThenRemoved) {
  beginWithAllLabels();
  const RecordingSignWindow& window = label(1);
  moveLabel(window, {space(3), space(0)});
  watchCalls();
  reconcile();
  EXPECT_THAT(log(), ElementsAre(HasSubstr("sign for space 2 found on [1, 4] — re-pinning")));
  std::erase_if(calls_, [](const Call& call) { return call.kind == Kind::Copy; });
  EXPECT_THAT(calls_,
              ElementsAre(Call{Kind::Add, {window.windowNumber()}, {space(1)}},
                          Call{Kind::Remove, {window.windowNumber()}, {space(0), space(3)}}));
  EXPECT_THAT(spacesOf(window), ElementsAre(space(1)));
}

TEST_F(SignPlacementTest, ALabelReportedInNoSpaceIsLeftAlone) {
  beginWithAllLabels();
  const RecordingSignWindow& window = label(1);
  moveLabel(window, {});
  watchCalls();
  reconcile();
  EXPECT_EQ(count(Kind::Copy), 4);
  EXPECT_EQ(calls_.size(), 4U);
  EXPECT_THAT(log(), IsEmpty());
  EXPECT_THAT(spacesOf(window), IsEmpty());
}

TEST_F(SignPlacementTest, ReconciliationIsOnEveryTenthTickAndOnEachActivation) {
  begin();
  watchCalls();
  advance(4999);
  EXPECT_EQ(count(Kind::Copy), 0);
  advance(1);
  EXPECT_EQ(count(Kind::Copy), 1);
  advance(4999);
  EXPECT_EQ(count(Kind::Copy), 1);
  advance(1);
  EXPECT_EQ(count(Kind::Copy), 2);
  goTo(1);
  EXPECT_EQ(count(Kind::Copy), 4) << "one for each label";
}

TEST_F(SignPlacementTest, LabelsInTheirPlacesAreAskedForAndNothingElse) {
  beginWithAllLabels();
  watchCalls();
  queue_.advance(seconds(60));
  EXPECT_EQ(count(Kind::Copy), 12 * 4);
  EXPECT_EQ(calls_.size(), 48U);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(SignPlacementTest, AnActivationPutsAStrayLabelBackAtOnce) {
  beginWithAllLabels();
  const RecordingSignWindow& window = label(3);
  moveLabel(window, {space(1)});
  goTo(2);
  EXPECT_THAT(spacesOf(window), ElementsAre(space(3)));
}

TEST_F(SignPlacementTest, AWindowServerThatAnswersNonsenseMovesNoLabel) {
  beginWithAllLabels();
  watchCalls();
  const PropertyList answers[] = {{},     "nonsense", 7, true, PropertyList::Dictionary{{"a", 1}},
                                  Array{}};
  for (const PropertyList& answer : answers) {
    desktop_.overrideSpacesForWindows(answer);
    reconcile();
  }
  EXPECT_EQ(count(Kind::Add) + count(Kind::Remove), 0);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(SignPlacementTest, AnAnswerWithoutAnyIdIsAnEmptyOne) {
  beginWithAllLabels();
  watchCalls();
  desktop_.overrideSpacesForWindows(Array{"nonsense", -1, PropertyList::Dictionary{}});
  reconcile();
  EXPECT_EQ(count(Kind::Add) + count(Kind::Remove), 0);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(SignPlacementTest, WhatIsNoIdInAnAnswerCountsAsAbsent) {
  begin(1);
  watchCalls();
  const auto own = static_cast<std::int64_t>(space(0));
  desktop_.overrideSpacesForWindows(Array{own, "nonsense", own, -5});
  reconcile();
  EXPECT_EQ(count(Kind::Add) + count(Kind::Remove), 0);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(SignPlacementTest, ASpaceThatVanishedBeforeTheRepairIsSurvived) {
  beginWithAllLabels();
  desktop_.removeSpace(space(3));  // not announced
  reconcile();
  EXPECT_THAT(log(), ElementsAre("[Vembrix] sign for space 4 found on [1] — re-pinning"));
  EXPECT_EQ(labelCount(), 4U);
  manager_.reload();
  EXPECT_EQ(labelCount(), 3U);
  reconcile();
  EXPECT_EQ(log().size(), 1U);
}

}  // namespace
}  // namespace vembrix
