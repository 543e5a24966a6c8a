#include <gmock/gmock.h>

#include <algorithm>

#include "platform/Application.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "support/AllocationCounter.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::Gt;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using Array = PropertyList::Array;
using Kind = TestDesktop::WindowSpacesCall::Kind;

class SignPlacementTest : public SignTest {
 protected:
  struct Call {
    Kind kind{};
    std::vector<WindowServer::WindowNumber> windows;
    std::vector<SpaceID> spaces;
    bool operator==(const Call&) const = default;
  };

  void watchCalls() {
    desktop_.watchWindowSpaces([this](const TestDesktop::WindowSpacesCall& call) {
      calls_.push_back({call.kind,
                        {call.windows.begin(), call.windows.end()},
                        {call.spaces.begin(), call.spaces.end()}});
    });
  }
  long count(Kind kind) const { return std::ranges::count(calls_, kind, &Call::kind); }

  void moveLabel(const RecordingSignWindow& window, std::vector<SpaceID> spaces) {
    desktop_.windows().move(window.windowNumber(), std::move(spaces));
  }
  void reconcile() { queue_.advance(seconds(5)); }
  /// Where a label is that is so wide and high, on the first screen.
  static Rect centeredOnMain(double width, double height) {
    return {720 - width / 2, 450 - height / 2, width, height};
  }

  std::vector<Call> calls_;
};

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
  controller_->handleSwipeBegan(true);
  queue_.advance(seconds(20));
  EXPECT_EQ(labelCount(), 0U);
}

TEST_F(SignPlacementTest, WithOneDesktopNothingIsEverSeen) {
  begin(1);
  controller_->handleSwipeBegan(true);
  controller_->handleSwipeBegan(false);
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
  controller_->handleSwipeBegan(false);
  controller_->handleSwipeBegan(true);
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
  controller_->handleSwipeBegan(true);
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

// The label that a swipe makes

TEST_F(SignPlacementTest, ASwipeBornLabelIsAddedToItsSpaceAndThenTakenOutOfTheActiveOne) {
  begin();
  watchCalls();
  controller_->handleSwipeBegan(true);
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
  controller_->handleSwipeBegan(true);
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
  controller_->handleSwipeBegan(true);
  EXPECT_EQ(label(1).view().look().borderWidth, 4) << "the most recent but for the active one";
  EXPECT_DOUBLE_EQ(label(0).view().look().rim.alpha, 1);
}

TEST_F(SignPlacementTest, ASwipeToADesktopWithALabelAsksTheWindowServerNothing) {
  beginWithAllLabels();
  watchCalls();
  controller_->handleSwipeBegan(true);
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(labelCount(), 4U);
}

TEST_F(SignPlacementTest, ASwipePassesOverFullScreenSpaces) {
  begin(1);
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.addSpace("Main");
  manager_.reload();
  controller_->handleSwipeBegan(true);
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

// Cost

class SignCostTest : public SignPlacementTest {
 protected:
  static constexpr std::size_t kLabels = 64;

  template <typename Action>
  static std::size_t allocationsOf(Action action) {
    action();
    const std::size_t before = allocationCount();
    action();
    return allocationCount() - before;
  }
};

TEST_F(SignCostTest, APrimingTickThatChangesNothingAllocatesNothing) {
  beginWithAllLabels(kLabels);
  EXPECT_EQ(allocationsOf([&] { desktop_.wake(); }), 0U);
}

TEST_F(SignCostTest, APrimingTickInMissionControlAllocatesNothing) {
  beginWithAllLabels(kLabels);
  setMissionControl(true);
  EXPECT_EQ(allocationsOf([&] { desktop_.wake(); }), 0U);
}

TEST_F(SignCostTest, APrimingTickAfterTheUserHasTurnedLabelsOffAllocatesNothing) {
  beginWithAllLabels(kLabels);
  store_.setShowSignInSwipeMode(false);
  EXPECT_EQ(allocationsOf([&] { desktop_.wake(); }), 0U);
}

TEST_F(SignCostTest, ATickOfTheTimerAllocatesWhatTheClockDoesAlone) {
  const auto bare = queue_.repeat(milliseconds(500), milliseconds(500), [] {});
  const std::size_t clocks = allocationsOf([&] { advance(500); });
  beginWithAllLabels(kLabels);
  EXPECT_EQ(allocationsOf([&] { advance(500); }), 2 * clocks) << "of two timers";
}

TEST_F(SignCostTest, AHeatRefreshThatChangesNothingAllocatesNothing) {
  SpaceHeatTracker::shared().start();
  beginWithAllLabels(kLabels);
  for (std::size_t place = 40; place > 0; --place) {
    goTo(place);
    engage();
  }
  const auto refresh = [] {
    NotificationCenter::defaultCenter().post(SpaceHeatTracker::didChange);
  };
  EXPECT_EQ(allocationsOf(refresh), 0U);
}

TEST_F(SignCostTest, APrimingTickSetsNoAlphaValueThatIsThere) {
  beginWithAllLabels(kLabels);
  std::vector<int> before;
  for (const auto* window : RecordingSignWindow::all()) before.push_back(window->alphaCount());
  queue_.advance(seconds(30));
  for (std::size_t i = 0; i < kLabels; ++i) {
    EXPECT_EQ(RecordingSignWindow::all()[i]->alphaCount(), before[i]);
  }
}

/// The question and the answer are the window server's; the controller adds nothing.
TEST_F(SignCostTest, AReconciliationWithNothingToRepairAllocatesWhatTheAnswersDo) {
  beginWithAllLabels(kLabels);
  advance(3000);  // to 4 s: the tenth tick is the second from here
  const std::size_t tick = allocationsOf([&] { advance(250); });
  ASSERT_EQ(queue_.now(), milliseconds(4500));
  const std::size_t before = allocationCount();
  advance(500);
  const std::size_t withReconciliation = allocationCount() - before;

  const std::size_t answers = allocationsOf([&] {
    for (const auto* window : RecordingSignWindow::all()) {
      (void)desktop_.windowServer().CGSCopySpacesForWindows(1, WindowServer::allSpaces,
                                                            std::array{window->windowNumber()});
    }
  });
  EXPECT_THAT(answers, Gt(0U));
  EXPECT_EQ(withReconciliation, answers + tick);
}

}  // namespace
}  // namespace vembrix
