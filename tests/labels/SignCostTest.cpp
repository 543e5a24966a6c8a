#include <gmock/gmock.h>

#include "labels/SignPlacementTest.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::Gt;

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

/// Query and answer allocate in the window server; the controller adds no allocation.
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
