#include "platform/macos/windowserver/MissionControlWindows.h"

#include <gmock/gmock.h>

#include <map>

#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Program = OverviewProgram;
using Window = MissionControlWindows::Window;

constexpr Size kScreen{1440, 900};

Window dockWindow(std::int64_t number, std::int64_t layer = 20, Size size = kScreen) {
  return {.number = number, .program = Program::Dock, .layer = layer, .size = size};
}

Window managersWindow(std::int64_t number, std::int64_t layer = 19) {
  return {.number = number, .program = Program::WindowManager, .layer = layer, .size = kScreen};
}

/// Reads lists of windows, one after the other.
class Readings {
 public:
  explicit Readings(MissionControlWindows::ShownBy shownBy) : judge_(shownBy) {}

  /// Returns the numbers of the windows that may be Mission Control.
  std::vector<std::int64_t> read(const std::vector<Window>& windows) {
    judge_.read(windows);
    std::vector<std::int64_t> numbers;
    for (const Window& window : windows) {
      if (judge_.contain(window)) numbers.push_back(window.number);
    }
    return numbers;
  }
  void goToAnotherSpace() { judge_.activeSpaceDidChange(); }

 private:
  MissionControlWindows judge_;
};

TEST(MissionControlOnMacOS26Test, EveryWindowOfTheDockCountsAlwaysAndNoneOfWindowManager) {
  Readings list(MissionControlWindows::ShownBy::Dock);
  for (int reading = 0; reading < 3; ++reading) {
    EXPECT_THAT(list.read({dockWindow(1), dockWindow(2, 18), managersWindow(3)}),
                ElementsAre(1, 2));
    list.goToAnotherSpace();
  }
}

class MissionControlOnMacOS27Test : public testing::Test {
 protected:
  Readings list_{MissionControlWindows::ShownBy::DockOrWindowManager};
};

TEST_F(MissionControlOnMacOS27Test, WindowManagersWindowsBelowTheDocksLayerCount) {
  EXPECT_THAT(list_.read({}), IsEmpty());
  EXPECT_THAT(list_.read({managersWindow(1), managersWindow(2)}), ElementsAre(1, 2));
  list_.goToAnotherSpace();
  EXPECT_THAT(list_.read({managersWindow(1)}), ElementsAre(1)) << "one swipes in it, too";
  EXPECT_THAT(list_.read({}), IsEmpty());
}

TEST_F(MissionControlOnMacOS27Test, WindowManagersOtherWindowsDoNotCount) {
  EXPECT_THAT(list_.read({managersWindow(1, 0), managersWindow(2, 14), managersWindow(3, 20)}),
              IsEmpty());
}

TEST_F(MissionControlOnMacOS27Test, TheDocksWindowsInOtherLayersCountAsBefore) {
  EXPECT_THAT(list_.read({dockWindow(1, 18)}), ElementsAre(1));
  list_.goToAnotherSpace();
  EXPECT_THAT(list_.read({dockWindow(1, 18)}), ElementsAre(1));
}

TEST_F(MissionControlOnMacOS27Test, AWindowInTheDocksLayerThatComesCountsUntilItGoes) {
  list_.read({});
  for (int time = 0; time < 2; ++time) {
    for (int reading = 0; reading < 50; ++reading) {
      EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7));
    }
    EXPECT_THAT(list_.read({}), IsEmpty());
  }
}

TEST_F(MissionControlOnMacOS27Test, OneThatIsThereFromTheStartDoesNotCount) {
  for (int reading = 0; reading < 3; ++reading) {
    EXPECT_THAT(list_.read({dockWindow(7)}), IsEmpty());
  }
  EXPECT_THAT(list_.read({dockWindow(7), dockWindow(8)}), ElementsAre(8)) << "but another does";
}

TEST_F(MissionControlOnMacOS27Test, OneThatWasThereFromTheStartCountsAfterAPause) {
  list_.read({dockWindow(7)});
  EXPECT_THAT(list_.read({}), IsEmpty());
  EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7));
}

TEST_F(MissionControlOnMacOS27Test, OneThatOutlivesAChangeOfSpaceCountsNoMore) {
  list_.read({});
  EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7)) << "the Dock keeps it";
  list_.goToAnotherSpace();
  for (int reading = 0; reading < 3; ++reading) {
    EXPECT_THAT(list_.read({dockWindow(7)}), IsEmpty());
  }
}

TEST_F(MissionControlOnMacOS27Test, OneThatComesAfterTheChangeOfSpaceHasNotOutlivedIt) {
  list_.read({});
  list_.goToAnotherSpace();
  EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7));
  EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7));
}

TEST_F(MissionControlOnMacOS27Test, OneBesideWindowManagersDoesNotCountAndNotAfterwards) {
  list_.read({});
  EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7));
  EXPECT_THAT(list_.read({dockWindow(7), managersWindow(8)}), ElementsAre(8));
  EXPECT_THAT(list_.read({dockWindow(7)}), IsEmpty()) << "Mission Control is closed";
}

TEST_F(MissionControlOnMacOS27Test, TheDocksOwnBarDoesNotHideThatItGrows) {
  const Window bar = dockWindow(7, 20, {1440, 80});
  EXPECT_THAT(list_.read({bar}), IsEmpty());
  EXPECT_THAT(list_.read({dockWindow(7)}), ElementsAre(7));
  EXPECT_THAT(list_.read({bar}), ElementsAre(7)) << "too small for Mission Control anyway";
}

TEST_F(MissionControlOnMacOS27Test, ManyChangesOfSpaceBetweenTwoReadingsAreOne) {
  list_.read({});
  list_.read({dockWindow(7)});
  for (int i = 0; i < 5; ++i) list_.goToAnotherSpace();
  EXPECT_THAT(list_.read({dockWindow(7), dockWindow(8)}), ElementsAre(8));
  EXPECT_THAT(list_.read({dockWindow(7), dockWindow(8)}), ElementsAre(8));
}

TEST_F(MissionControlOnMacOS27Test, OtherProgramsDoNotCount) {
  list_.read({});
  for (Window window : {dockWindow(1), managersWindow(2)}) {
    window.program = Program::Other;
    EXPECT_THAT(list_.read({window}), IsEmpty());
  }
}

TEST_F(MissionControlOnMacOS27Test, AReadingAllocatesNothing) {
  MissionControlWindows judge(MissionControlWindows::ShownBy::DockOrWindowManager);
  const std::vector<Window> windows{dockWindow(1), dockWindow(2), managersWindow(3)};
  judge.read(windows);
  judge.read(windows);
  const std::size_t before = allocationCount();
  judge.activeSpaceDidChange();
  judge.read(windows);
  EXPECT_TRUE(judge.contain(windows[2]));
  EXPECT_EQ(allocationCount(), before);
}

class OverviewProgramsTest : public testing::Test {
 protected:
  std::map<std::int64_t, Program> running_;
  int questions_ = 0;
  OverviewPrograms programs_{[this](std::int64_t process) -> std::optional<Program> {
    questions_ += 1;
    const auto found = running_.find(process);
    if (found == running_.end()) return std::nullopt;
    return found->second;
  }};
};

TEST_F(OverviewProgramsTest, AKnownProcessIsAskedAboutOnce) {
  running_ = {{1, Program::Dock}, {2, Program::Other}};
  for (int reading = 0; reading < 100; ++reading) {
    programs_.beginReading();
    EXPECT_EQ(programs_.of(1), Program::Dock);
    EXPECT_EQ(programs_.of(2), Program::Other);
  }
  EXPECT_EQ(questions_, 2);
}

TEST_F(OverviewProgramsTest, AProcessThatIsUnknownOnceIsAskedAboutAgainLater) {
  programs_.beginReading();
  EXPECT_EQ(programs_.of(1), Program::Other);
  running_ = {{1, Program::Dock}};
  for (std::uint64_t reading = 1; reading < OverviewPrograms::patience; ++reading) {
    programs_.beginReading();
    EXPECT_EQ(programs_.of(1), Program::Other);
  }
  EXPECT_EQ(questions_, 1) << "not at every reading";
  programs_.beginReading();
  EXPECT_EQ(programs_.of(1), Program::Dock);
  EXPECT_EQ(programs_.of(1), Program::Dock);
  EXPECT_EQ(questions_, 2);
}

TEST_F(OverviewProgramsTest, AProcessThatStaysUnknownIsAskedAboutNowAndThen) {
  for (std::uint64_t reading = 0; reading < 10 * OverviewPrograms::patience; ++reading) {
    programs_.beginReading();
    // The program has two windows.
    EXPECT_EQ(programs_.of(1), Program::Other);
    EXPECT_EQ(programs_.of(1), Program::Other);
  }
  EXPECT_EQ(questions_, 10);
}

TEST_F(OverviewProgramsTest, TheNumberOfAProcessThatEndedIsNotRememberedForEver) {
  running_ = {{1, Program::Dock}};
  programs_.beginReading();
  EXPECT_EQ(programs_.of(1), Program::Dock);
  running_ = {{1, Program::Other}};
  for (std::int64_t process = 2; process < 1000; ++process) programs_.of(process);
  EXPECT_EQ(programs_.of(1), Program::Other);
}

TEST_F(OverviewProgramsTest, ALookAtKnownProcessesAllocatesNothing) {
  running_ = {{1, Program::Dock}};
  programs_.of(1);
  programs_.of(2);
  const std::size_t before = allocationCount();
  for (std::uint64_t reading = 0; reading < 3 * OverviewPrograms::patience; ++reading) {
    programs_.beginReading();
    programs_.of(1);
    programs_.of(2);
  }
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace
}  // namespace vembrix
