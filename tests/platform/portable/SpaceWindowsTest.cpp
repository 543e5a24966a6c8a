#include "platform/portable/SpaceWindows.h"

#include <gmock/gmock.h>

#include <array>

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Number = SpaceWindows::WindowNumber;
using SpaceID = SpaceWindows::SpaceID;

class SpaceWindowsTest : public testing::Test {
 protected:
  Number add(std::uint64_t behavior = 0, WindowLevel level = WindowLevel::Floating) {
    return windows_.add({.owner = "Program",
                         .frame = {0, 0, 100, 100},
                         .level = level,
                         .collectionBehavior = behavior,
                         .spaces = {}});
  }
  /// Shows a window in front, in the active Space.
  Number show(std::uint64_t behavior = 0, WindowLevel level = WindowLevel::Floating) {
    const Number number = add(behavior, level);
    windows_.orderFront(number);
    return number;
  }
  std::vector<SpaceID> spacesOf(Number number) const {
    return windows_.spacesOf(std::array{number}, kAll);
  }
  void addTo(Number number, std::vector<SpaceID> spaces) {
    windows_.addToSpaces(std::array{number}, spaces);
  }
  void removeFrom(Number number, std::vector<SpaceID> spaces) {
    windows_.removeFromSpaces(std::array{number}, spaces);
  }
  std::vector<Number> onScreen(std::vector<SpaceID> spaces) const {
    std::vector<Number> numbers;
    for (const auto* window : windows_.onScreen(spaces)) numbers.push_back(window->number);
    return numbers;
  }

  static bool isFirst(SpaceID space) { return space == 1; }

  static constexpr std::array<SpaceID, 3> kAll = {1, 2, 3};

  SpaceID active_ = 1;
  SpaceWindows windows_{[this] { return active_; }};
};

TEST_F(SpaceWindowsTest, AWindowIsInNoSpaceBeforeItIsFirstShown) {
  const Number window = add();
  EXPECT_THAT(spacesOf(window), IsEmpty());
  EXPECT_FALSE(windows_.find(window)->isOrderedIn);
}

TEST_F(SpaceWindowsTest, AWindowIsBornInTheSpaceThatIsActiveWhenItIsFirstShown) {
  const Number window = add();
  active_ = 3;
  windows_.orderFront(window);
  EXPECT_THAT(spacesOf(window), ElementsAre(3));
  EXPECT_TRUE(windows_.find(window)->isOrderedIn);
}

TEST_F(SpaceWindowsTest, AWindowIsBornOnce) {
  const Number window = show();
  active_ = 2;
  windows_.orderFront(window);
  EXPECT_THAT(spacesOf(window), ElementsAre(1));
  windows_.orderOut(window);
  windows_.orderFront(window);
  EXPECT_THAT(spacesOf(window), ElementsAre(1));
}

TEST_F(SpaceWindowsTest, WithoutAnActiveSpaceAWindowIsBornNowhere) {
  active_ = 0;
  EXPECT_THAT(spacesOf(show()), IsEmpty());
}

TEST_F(SpaceWindowsTest, AWindowIsAddedToSpacesBesidesItsOwnAndToEachOnce) {
  const Number window = show();
  addTo(window, {3, 1, 3});
  EXPECT_THAT(spacesOf(window), ElementsAre(1, 3));
}

TEST_F(SpaceWindowsTest, AWindowIsRemovedFromTheNamedSpacesOnly) {
  const Number window = show();
  addTo(window, {2, 3});
  removeFrom(window, {1, 3, 77});
  EXPECT_THAT(spacesOf(window), ElementsAre(2));
}

TEST_F(SpaceWindowsTest, AWindowMayEndUpInNoSpaceAndIsThenNotOnTheScreen) {
  const Number window = show();
  removeFrom(window, {1});
  EXPECT_THAT(spacesOf(window), IsEmpty());
  EXPECT_THAT(onScreen({1, 2, 3}), IsEmpty());
}

TEST_F(SpaceWindowsTest, UnknownWindowsAreIgnored) {
  addTo(99, {1});
  removeFrom(99, {1});
  windows_.orderFront(99);
  windows_.orderOut(99);
  windows_.move(99, {1});
  windows_.remove(99);
  EXPECT_EQ(windows_.find(99), nullptr);
  EXPECT_THAT(spacesOf(99), IsEmpty());
  EXPECT_EQ(windows_.count(), 0U);
}

TEST_F(SpaceWindowsTest, TheSpacesOfSeveralWindowsAreListedOnce) {
  const Number first = show();
  const Number second = show();
  addTo(second, {2});
  EXPECT_THAT(windows_.spacesOf(std::array{first, second, first}, kAll), ElementsAre(1, 2));
}

TEST_F(SpaceWindowsTest, AWindowIsMovedBehindTheProgramsBack) {
  const Number window = show();
  windows_.move(window, {2, 3});
  EXPECT_THAT(spacesOf(window), ElementsAre(2, 3));
  windows_.move(window, {});
  EXPECT_THAT(spacesOf(window), IsEmpty());
}

TEST_F(SpaceWindowsTest, WhenASpaceGoesItsWindowsFindRefuge) {
  const Number alone = show();
  const Number inTwo = show();
  const Number elsewhere = show();
  addTo(inTwo, {3});
  windows_.move(elsewhere, {3});
  windows_.removeSpaces(isFirst, 2);
  EXPECT_THAT(spacesOf(alone), ElementsAre(2));
  EXPECT_THAT(spacesOf(inTwo), ElementsAre(3)) << "it was in another Space already";
  EXPECT_THAT(spacesOf(elsewhere), ElementsAre(3));
}

TEST_F(SpaceWindowsTest, WithoutARefugeTheWindowsOfARemovedSpaceAreNowhere) {
  const Number window = show();
  windows_.removeSpaces(isFirst, 0);
  EXPECT_THAT(spacesOf(window), IsEmpty());
}

TEST_F(SpaceWindowsTest, AWindowThatJoinsAllSpacesIsInEveryOne) {
  const Number window = show(CanJoinAllSpaces);
  EXPECT_THAT(spacesOf(window), ElementsAre(1, 2, 3));
  EXPECT_THAT(onScreen({3}), ElementsAre(window));
}

TEST_F(SpaceWindowsTest, MissionControlShowsWhatIsOrderedInThere) {
  const Number managed = show(Managed);
  const Number elsewhere = show(Managed);
  windows_.move(elsewhere, {2});
  const Number out = show(Managed);
  windows_.orderOut(out);
  add(Managed);
  EXPECT_THAT(windows_.shownByMissionControl(1), ElementsAre(managed));
  EXPECT_THAT(windows_.shownByMissionControl(2), ElementsAre(elsewhere));
}

TEST_F(SpaceWindowsTest, TransientWindowsHideFromMissionControlButAreOnTheScreen) {
  const Number transient = show(Transient | IgnoresCycle);
  EXPECT_THAT(windows_.shownByMissionControl(1), IsEmpty());
  EXPECT_THAT(onScreen({1}), ElementsAre(transient));
}

TEST_F(SpaceWindowsTest, AWindowStandsBeforeTheOthersOfItsLevelAndBelowHigherOnes) {
  const Number low = show(0, WindowLevel::Floating);
  const Number high = show(0, WindowLevel::Status);
  const Number next = show(0, WindowLevel::Floating);
  EXPECT_THAT(onScreen({1}), ElementsAre(high, next, low));
  windows_.orderFront(low);
  EXPECT_THAT(onScreen({1}), ElementsAre(high, low, next));
}

TEST_F(SpaceWindowsTest, AWindowInSeveralShownSpacesIsOnTheScreenOnce) {
  const Number window = show();
  addTo(window, {2});
  EXPECT_THAT(onScreen({1, 2}), ElementsAre(window));
}

TEST_F(SpaceWindowsTest, TellsOfOneWindowWhetherItIsOnTheScreen) {
  const Number window = show();
  const Number joining = show(CanJoinAllSpaces);
  EXPECT_TRUE(windows_.isOnScreen(window, 1));
  EXPECT_FALSE(windows_.isOnScreen(window, 2));
  EXPECT_TRUE(windows_.isOnScreen(joining, 2));
  EXPECT_FALSE(windows_.isOnScreen(add(CanJoinAllSpaces), 2)) << "it was never shown";
  EXPECT_FALSE(windows_.isOnScreen(99, 1));
  windows_.orderOut(window);
  EXPECT_FALSE(windows_.isOnScreen(window, 1));
}

TEST_F(SpaceWindowsTest, TheWatcherIsToldWhateverMovesAWindow) {
  const Number window = add();
  int told = 0;
  windows_.watch([&] { told += 1; });
  windows_.orderFront(window);
  EXPECT_EQ(told, 1);
  addTo(window, {2});
  EXPECT_EQ(told, 2);
  removeFrom(window, {2});
  EXPECT_EQ(told, 3);
  windows_.move(window, {3});
  EXPECT_EQ(told, 4);
  windows_.removeSpaces([](SpaceID space) { return space == 2; }, 1);
  EXPECT_EQ(told, 4) << "no window was there";
  windows_.removeSpaces([](SpaceID space) { return space == 3; }, 1);
  EXPECT_EQ(told, 5);
  windows_.orderOut(window);
  EXPECT_EQ(told, 6);
  windows_.remove(window);
  EXPECT_EQ(told, 7);
}

TEST_F(SpaceWindowsTest, NumbersAreNeverUsedAgain) {
  const Number first = add();
  windows_.remove(first);
  EXPECT_NE(add(), first);
  EXPECT_THAT(windows_.onScreen(kAll), SizeIs(0));
  EXPECT_EQ(windows_.count(), 1U);
}

}  // namespace
}  // namespace vembrix
