#include "watchers/MissionControlWatcher.h"

#include <gmock/gmock.h>

#include "platform/NotificationCenter.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

class MissionControlWatcherTest : public testing::Test {
 protected:
  bool activeFor(PropertyList windowList) {
    desktop_.overrideWindowList(std::move(windowList));
    watcher_.start();
    queue_.advance(milliseconds(300));
    return watcher_.isActive();
  }

  static PropertyList window(PropertyList owner, PropertyList width, PropertyList height) {
    return Dictionary{
        {"kCGWindowOwnerName", std::move(owner)},
        {"kCGWindowBounds",
         Dictionary{{"X", 0}, {"Width", std::move(width)}, {"Height", std::move(height)}}}};
  }

  static std::vector<std::string> log() { return EmbeddedLog::shared().lines(); }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  MissionControlWatcher& watcher_ = MissionControlWatcher::shared();
  int posts_ = 0;
  Observation observation_ = NotificationCenter::defaultCenter().addObserver(
      MissionControlWatcher::didChange, [this] { posts_ += 1; });
};

TEST_F(MissionControlWatcherTest, ItsNotificationGoesByItsName) {
  EXPECT_EQ(MissionControlWatcher::didChange, "MissionControlWatcherDidChange");
}

TEST_F(MissionControlWatcherTest, OpeningAndClosingIsNoticedWithin300msAndPostedOnce) {
  watcher_.start();
  queue_.advance(milliseconds(1000));
  EXPECT_FALSE(watcher_.isActive());
  EXPECT_EQ(posts_, 0);
  desktop_.setMissionControl(true);
  queue_.advance(milliseconds(300));
  EXPECT_TRUE(watcher_.isActive());
  queue_.advance(milliseconds(3000));
  EXPECT_EQ(posts_, 1);
  desktop_.setMissionControl(false);
  queue_.advance(milliseconds(300));
  EXPECT_FALSE(watcher_.isActive());
  EXPECT_EQ(posts_, 2);
  EXPECT_THAT(log(),
              ElementsAre("[Vembrix] Mission Control opened", "[Vembrix] Mission Control closed"));
}

TEST_F(MissionControlWatcherTest, TheFirstLookIsAtOnce) {
  desktop_.setMissionControl(true);
  watcher_.start();
  queue_.runPending();
  EXPECT_TRUE(watcher_.isActive());
}

TEST_F(MissionControlWatcherTest, TwoPollsWithTheSameResultLogAndPostNothingTheSecondTime) {
  desktop_.setMissionControl(true);
  watcher_.start();
  queue_.advance(milliseconds(300));
  EXPECT_EQ(posts_, 1);
  EXPECT_EQ(log().size(), 1U);
}

TEST_F(MissionControlWatcherTest, ADockWindowOfExactly90By80PercentCounts) {
  EXPECT_TRUE(activeFor(Array{window("Dock", 0.9 * 1440, 0.8 * 900)}));
}

TEST_F(MissionControlWatcherTest, ALittleLessDoesNotCount) {
  EXPECT_FALSE(activeFor(Array{window("Dock", 0.9 * 1440 - 1, 900)}));
  EXPECT_FALSE(activeFor(Array{window("Dock", 1440, 0.8 * 900 - 1)}));
}

TEST_F(MissionControlWatcherTest, AFullScreenWindowOfAnotherOwnerNeverCounts) {
  EXPECT_FALSE(activeFor(Array{window("Finder", 1440, 900), window("dock", 1440, 900),
                               window("Dock ", 1440, 900), window(7, 1440, 900)}));
}

TEST_F(MissionControlWatcherTest, ADockWindowLargeEnoughForASecondaryScreenCounts) {
  desktop_.addDisplay({.identifier = "Small", .frame = {1440, 0, 800, 600}});
  EXPECT_TRUE(activeFor(Array{window("Dock", 800, 600)}));
}

TEST_F(MissionControlWatcherTest, WidthAndHeightMustFitTheSameScreen) {
  desktop_.addDisplay({.identifier = "Wide", .frame = {1440, 0, 2000, 600}});
  EXPECT_FALSE(activeFor(Array{window("Dock", 1440, 600)}))
      << "as wide as the first and as high as the second";
  EXPECT_TRUE(activeFor(Array{window("Dock", 2000, 600)}));
}

TEST_F(MissionControlWatcherTest, AWindowCoversAScreenThatHasBecomeSmaller) {
  EXPECT_FALSE(activeFor(Array{window("Dock", 1000, 700)}));
  desktop_.setDisplayFrame("Main", {0, 0, 1024, 768});
  queue_.advance(milliseconds(300));
  EXPECT_TRUE(watcher_.isActive());
}

TEST_F(MissionControlWatcherTest, WithoutScreensItIsClosed) {
  desktop_.removeDisplay("Main");
  EXPECT_FALSE(activeFor(Array{window("Dock", 5000, 5000)}));
}

TEST_F(MissionControlWatcherTest, WithoutScreensAndWithoutAListItIsClosedFromTheFirstLook) {
  desktop_.removeDisplay("Main");
  EXPECT_FALSE(activeFor(PropertyList()));
  EXPECT_EQ(posts_, 0);
}

TEST_F(MissionControlWatcherTest, MalformedListsAndWindowsCountAsClosed) {
  for (const PropertyList& list :
       {PropertyList(), PropertyList("text"), PropertyList(Array{window("Dock", 1440, 900), 7}),
        PropertyList(Array{window("Dock", "1440", 900)}),
        PropertyList(Array{window("Dock", 1440, true)}),
        PropertyList(Array{Dictionary{{"kCGWindowOwnerName", "Dock"}}}),
        PropertyList(Array{Dictionary{{"kCGWindowOwnerName", "Dock"}, {"kCGWindowBounds", 7}}}),
        PropertyList(Array{
            Dictionary{{"kCGWindowBounds", Dictionary{{"Width", 1440}, {"Height", 900}}}}})}) {
    EXPECT_FALSE(activeFor(list));
  }
}

TEST_F(MissionControlWatcherTest, AMalformedWindowDoesNotHideTheNext) {
  EXPECT_TRUE(
      activeFor(Array{Dictionary{{"kCGWindowOwnerName", "Dock"}}, window("Dock", 1440, 900)}));
}

TEST_F(MissionControlWatcherTest, ASecondStartDoesNotPollTwice) {
  watcher_.start();
  const std::size_t pending = queue_.pendingCount();
  watcher_.start();
  EXPECT_EQ(queue_.pendingCount(), pending);
}

}  // namespace
}  // namespace vembrix
