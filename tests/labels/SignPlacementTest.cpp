#include "labels/SignPlacementTest.h"

#include <gmock/gmock.h>

#include "platform/embedded/services/EmbeddedApplication.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using Kind = TestDesktop::WindowSpacesCall::Kind;

// Start

TEST_F(SignPlacementTest, AtTheStartOnlyTheActiveDesktopHasALabelAndItIsInvisible) {
  begin();
  EXPECT_EQ(labelCount(), 1U);
  EXPECT_EQ(alpha(0), 0);
  EXPECT_TRUE(label(0).isOrderedIn());
  EXPECT_EQ(label(0).view().text(), "Desktop 1");
}

TEST_F(SignPlacementTest, TheFirstLabelIsTheActiveDesktopsWhereverThatIs) {
  desktop_.setSpaceCount(4);
  desktop_.activate(space(2));
  beginHere();
  EXPECT_EQ(labelCount(), 1U);
  EXPECT_EQ(label(2).view().text(), "Desktop 3");
}

TEST_F(SignPlacementTest, ALabelFloatsBelongsToOneSpaceAndIsShownByMissionControl) {
  begin();
  EXPECT_EQ(static_cast<int>(label(0).options().level), 3);
  EXPECT_EQ(label(0).options().collectionBehavior, 324U);
  EXPECT_THAT(desktop_.windows().shownByMissionControl(space(0)),
              ElementsAre(label(0).windowNumber()));
}

TEST_F(SignPlacementTest, TheActiveLabelIsAddedToItsSpaceAndTakenOutOfNone) {
  watchCalls();
  begin();
  EXPECT_THAT(calls_, ElementsAre(Call{Kind::Add, {label(0).windowNumber()}, {space(0)}}));
}

TEST_F(SignPlacementTest, WithoutSpacesThereIsNoLabel) {
  begin(0);
  EXPECT_EQ(labelCount(), 0U);
  controller_->showAll();
  controller_->handleSwipeBegan(ISSDirection::Right);
  queue_.advance(seconds(20));
  EXPECT_EQ(labelCount(), 0U);
}

TEST_F(SignPlacementTest, WithOneDesktopNothingIsEverSeen) {
  begin(1);
  controller_->handleSwipeBegan(ISSDirection::Right);
  controller_->handleSwipeBegan(ISSDirection::Left);
  controller_->showAll();
  advance(600);
  EXPECT_EQ(labelCount(), 1U);
  EXPECT_EQ(alpha(0), 0);
  queue_.advance(seconds(20));
  EXPECT_EQ(alpha(0), 0);
}

TEST_F(SignPlacementTest, AnActiveSpaceThatIsNotListedGetsNoLabel) {
  desktop_.overrideActiveSpace(999);
  begin();
  EXPECT_EQ(labelCount(), 0U);
  desktop_.overrideActiveSpace(std::nullopt);
  manager_.reload();
  EXPECT_EQ(labelCount(), 1U);
}

TEST_F(SignPlacementTest, TheActivityKeepsTheTimersPaceAsLongAsTheController) {
  begin();
  const auto& activities = EmbeddedApplication::shared().activities();
  ASSERT_THAT(activities, SizeIs(1));
  EXPECT_THAT(activities.begin()->second, Pair(0xEFFFFFU, "Keep desktop-label priming responsive"));
  queue_.advance(seconds(60));
  EXPECT_THAT(activities, SizeIs(1));
  controller_.reset();
  EXPECT_THAT(activities, IsEmpty());
}

TEST_F(SignPlacementTest, AtRestOneTimerRunsAndNothingOutlivesTheController) {
  begin();
  EXPECT_EQ(queue_.pendingCount(), 1U);
  queue_.advance(seconds(60));
  EXPECT_EQ(queue_.pendingCount(), 1U);
  controller_.reset();
  EXPECT_EQ(queue_.pendingCount(), 0U);
  EXPECT_EQ(labelCount(), 0U);
  EXPECT_EQ(desktop_.windows().count(), 0U);
}

TEST_F(SignPlacementTest, EventsAfterTheControllersEndReachNobody) {
  beginWithAllLabels();
  controller_->showAll();
  controller_.reset();
  goTo(2);
  touchLabels();
  desktop_.wake();
  desktop_.setDisplayFrame("Main", {0, 0, 800, 600});
  store_.setSignTextSize(20);
  setMissionControl(true);
  queue_.advance(seconds(20));
  EXPECT_EQ(labelCount(), 0U);
}

// Size and place

TEST_F(SignPlacementTest, ALabelIsAsLargeAsItsNameNeedsInTheMiddleOfTheScreen) {
  begin();
  // 9 characters of 96 points, 192 high.
  const Rect frame = label(0).frame();
  EXPECT_DOUBLE_EQ(frame.width, 864 + 160);
  EXPECT_DOUBLE_EQ(frame.height, 192 + 120);
  EXPECT_DOUBLE_EQ(frame.x, 720 - 512);
  EXPECT_DOUBLE_EQ(frame.y, 450 - 156);
}

TEST_F(SignPlacementTest, AVeryLongNameIsCappedAt90PercentOfTheScreensWidth) {
  begin();
  manager_.setName(std::string(500, 'W'), manager_.spaces().at(0));
  EXPECT_EQ(label(0).frame(), centeredOnMain(1296, 312));
}

TEST_F(SignPlacementTest, ALabelIsNeverHigherThan60PercentOfTheScreen) {
  defaults_.set("SignTextSize", 2000);
  begin();
  EXPECT_EQ(label(0).frame(), centeredOnMain(1296, 540));
}

TEST_F(SignPlacementTest, TheMenuBarDoesNotShiftLabels) {
  desktop_.addDisplay(
      {.identifier = "Second", .frame = {1440, 0, 3000, 2000}, .menuBarHeight = 500});
  begin();
  desktop_.activate(desktop_.spaceIDs().back());
  const Rect frame = labelIn(desktop_.activeSpace()).frame();
  EXPECT_DOUBLE_EQ(frame.x + frame.width / 2, 1440 + 1500);
  EXPECT_DOUBLE_EQ(frame.y + frame.height / 2, 1000);
}

TEST_F(SignPlacementTest, AScreenThatIsResizedMovesEveryLabelAtOnceAndLeavesTheRest) {
  beginWithAllLabels();
  label(1).view().setText("as it was");
  const auto before = alphas();
  desktop_.setDisplayFrame("Main", {0, 0, 800, 400});
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(label(place).frame(), (Rect{40, 80, 720, 240})) << place;
  }
  EXPECT_EQ(label(1).view().text(), "as it was") << "names have not changed";
  EXPECT_EQ(alphas(), before);
}

TEST_F(SignPlacementTest, AnotherTextSizeResizesEveryLabelAtOnce) {
  beginWithAllLabels();
  store_.setSignTextSize(50);
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(label(place).frame(), centeredOnMain(9 * 30 + 160, 60 + 120)) << place;
  }
}

TEST_F(SignPlacementTest, ANameOfAnyScriptHasTheSizeThatItsTextTakes) {
  begin();
  manager_.setName("שלום", manager_.spaces().at(0));
  EXPECT_EQ(label(0).frame(), centeredOnMain(4 * 96 + 160, 312));
  manager_.setName("🏡🚀", manager_.spaces().at(0));
  EXPECT_EQ(label(0).frame(), centeredOnMain(2 * 96 + 160, 312));
}

TEST_F(SignPlacementTest, ARenameResizesTheLabelAndLeavesItsAlphaValue) {
  beginWithAllLabels();
  manager_.setName("Code", manager_.spaces().at(2));
  EXPECT_EQ(label(2).view().text(), "Code");
  EXPECT_EQ(label(2).frame(), centeredOnMain(4 * 96 + 160, 312));
  EXPECT_EQ(alpha(2), 0.78);
}

TEST_F(SignPlacementTest, WithoutAScreenLabelsEndTheProgram) {
  begin();
  EXPECT_DEATH(desktop_.removeDisplay("Main"), "there is no screen for the labels");
}

// Activations and the list of Spaces

TEST_F(SignPlacementTest, EveryDesktopGetsItsLabelWhenItFirstBecomesActive) {
  begin();
  for (std::size_t place = 1; place < 4; ++place) {
    goTo(place);
    EXPECT_EQ(labelCount(), place + 1);
    EXPECT_EQ(alpha(place), 0);
    EXPECT_THAT(spacesOf(label(place)), ElementsAre(space(place)));
  }
  goTo(0);
  EXPECT_EQ(labelCount(), 4U);
}

TEST_F(SignPlacementTest, ActivatingADesktopWithALabelOnlyRefreshesItsText) {
  beginWithAllLabels();
  RecordingSignWindow& window = label(1);
  window.view().setText("outdated");
  window.setFrame({1, 2, 3, 4});
  goTo(1);
  EXPECT_EQ(&label(1), &window);
  EXPECT_EQ(window.view().text(), "Desktop 2");
  EXPECT_EQ(window.frame(), (Rect{1, 2, 3, 4}));
  EXPECT_EQ(window.alphaValue(), 0.78) << "until the next turn";
}

TEST_F(SignPlacementTest, AVanishedDesktopTakesItsLabelAndNoOther) {
  beginWithAllLabels();
  const auto gone = label(2).windowNumber();
  desktop_.removeSpace(space(2));
  manager_.reload();
  EXPECT_EQ(labelCount(), 3U);
  EXPECT_EQ(desktop_.windows().find(gone), nullptr);
  EXPECT_THAT(alphas(3), ElementsAre(0, 0.78, 0.78));
  EXPECT_EQ(label(2).view().text(), "Desktop 3") << "the fourth is the third now";
}

TEST_F(SignPlacementTest, TheActiveDesktopMayVanish) {
  beginWithAllLabels();
  goTo(3);
  turn();
  desktop_.removeSpace(space(3));
  EXPECT_EQ(labelCount(), 3U);
  advance(500);
  EXPECT_THAT(alphas(3), ElementsAre(0.78, 0.78, 0));
}

TEST_F(SignPlacementTest, ANewDesktopGetsNoLabelBeforeItIsActive) {
  begin(2);
  desktop_.addSpace("Main");
  manager_.reload();
  advance(1000);
  EXPECT_EQ(labelCount(), 1U);
  goTo(2);
  EXPECT_EQ(label(2).view().text(), "Desktop 3");
}

TEST_F(SignPlacementTest, ReorderedDesktopsKeepTheirLabelsWithTheirNewNames) {
  beginWithAllLabels();
  const auto number = label(0).windowNumber();
  desktop_.moveSpace(space(0), 3);
  manager_.reload();
  EXPECT_EQ(label(3).windowNumber(), number);
  EXPECT_EQ(label(3).view().text(), "Desktop 4");
  EXPECT_EQ(labelCount(), 4U);
}

TEST_F(SignPlacementTest, AFullScreenSpaceNeverHasALabel) {
  begin(2);
  const auto full = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  watchCalls();
  desktop_.activate(full);
  turn();
  EXPECT_FALSE(hasLabel(full));
  EXPECT_EQ(labelCount(), 1U);
  EXPECT_EQ(alpha(0), 0.78) << "the desktop's own is there for the way back";
  EXPECT_EQ(count(Kind::Add), 0);
  desktop_.activate(full);
  manager_.reload();
  queue_.advance(seconds(6));
  EXPECT_EQ(labelCount(), 1U);
}

TEST_F(SignPlacementTest, StartedInAFullScreenSpaceTheProgramMakesItsFirstLabelInADesktop) {
  desktop_.setSpaceCount(2);
  desktop_.activate(desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen));
  beginHere();
  EXPECT_EQ(labelCount(), 0U);
  goTo(1);
  EXPECT_EQ(labelCount(), 1U);
  EXPECT_EQ(label(1).view().text(), "Desktop 2");
}

TEST_F(SignPlacementTest, BackFromAFullScreenSpaceTheDesktopsOwnLabelIsShown) {
  beginWithAllLabels(2);
  const RecordingSignWindow& own = label(0);
  const auto full = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.activate(full);
  turn();
  goTo(0);
  EXPECT_EQ(&label(0), &own);
  EXPECT_EQ(alpha(0), 0.78);
  turn();
  EXPECT_TRUE(label(0).isAnimating());
  advance(500);
  EXPECT_EQ(alpha(0), 0);
  EXPECT_THAT(spacesOf(label(0)), ElementsAre(space(0)));
  EXPECT_EQ(labelCount(), 2U);
}

TEST_F(SignPlacementTest, FromAFullScreenSpaceASwipeMakesNoLabel) {
  begin(2);
  const auto full = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.activate(full);
  controller_->handleSwipeBegan(ISSDirection::Left);
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_EQ(labelCount(), 1U);
  EXPECT_FALSE(hasLabel(space(1)));
}

TEST_F(SignPlacementTest, InAFullScreenSpaceTheHotCornerAndMissionControlShowTheDesktopsLabels) {
  beginWithAllLabels(2);
  desktop_.activate(desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen));
  controller_->showAll();
  advance(500);
  EXPECT_THAT(alphas(2), ElementsAre(1, 1));
  goTo(1);
  goTo(0);
  desktop_.activate(desktop_.spaceIDs().back());
  setMissionControl(true);
  EXPECT_THAT(alphas(2), ElementsAre(1, 1));
  EXPECT_EQ(labelCount(), 2U);
}

TEST_F(SignPlacementTest, TheDesktopsOfTwoDisplaysEachHaveOneLabel) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  begin(2);
  const auto other = desktop_.spaceIDs().back();
  desktop_.activate(other);
  EXPECT_THAT(spacesOf(labelIn(other)), ElementsAre(other));
  EXPECT_EQ(labelIn(other).view().text(), "Desktop 1") << "the first of its display";
  desktop_.removeDisplay("Second");
  EXPECT_EQ(labelCount(), 1U);
}

TEST_F(SignPlacementTest, ASwipeGoesOnFromDisplayToDisplayInTheOrderOfTheList) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  begin(1);
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_TRUE(hasLabel(desktop_.spaceIDs().at(1)));
}

TEST_F(SignPlacementTest, HundredsOfDesktopsHaveTheirLabels) {
  beginWithAllLabels(300);
  EXPECT_EQ(labelCount(), 300U);
  for (std::size_t place = 0; place < 300; ++place) {
    EXPECT_EQ(alpha(place), place == 0 ? 0 : 0.78);
    EXPECT_EQ(label(place).view().text(), "Desktop " + std::to_string(place + 1));
  }
  desktop_.setSpaceCount(1);
  manager_.reload();
  EXPECT_EQ(labelCount(), 1U);
}

}  // namespace
}  // namespace vembrix
