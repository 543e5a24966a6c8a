#include "watchers/SpaceHeatTracker.h"

#include <gmock/gmock.h>

#include "platform/NotificationCenter.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
constexpr auto kYes = IncludingActive::Yes;
constexpr auto kNo = IncludingActive::No;

class SpaceHeatTrackerTest : public testing::Test {
 protected:
  SpaceHeatTracker& start() {
    SpaceManager::shared().reload();
    SpaceHeatTracker::shared().start();
    return SpaceHeatTracker::shared();
  }

  /// Takes the user to the Space and clicks there.
  void engage(std::size_t place) {
    desktop_.activate(desktop_.spaceAt(place));
    desktop_.input().send(LeftMouseDown);
  }

  static std::string uuid(std::size_t place) {
    return "embedded-space-" + std::to_string(place + 1);
  }
  PropertyList stored() { return defaults_.object("SpaceHeatRecency"); }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  SpaceObserver observer_;
  Observation arrival_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { observer_.activeSpaceDidChange(); });
  int posts_ = 0;
  Observation observation_ = NotificationCenter::defaultCenter().addObserver(
      SpaceHeatTracker::didChange, [this] { posts_ += 1; });
};

TEST_F(SpaceHeatTrackerTest, ItsNotificationGoesByItsName) {
  EXPECT_EQ(SpaceHeatTracker::didChange, "SpaceHeatTrackerDidChange");
}

TEST_F(SpaceHeatTrackerTest, AKeyPressInTheSpaceThatIsFirstPostsAndWritesNothing) {
  start();
  engage(0);
  EXPECT_EQ(posts_, 1);
  const int writes = defaults_.writeCount();
  desktop_.input().send(KeyDown);
  EXPECT_EQ(posts_, 1);
  EXPECT_EQ(defaults_.writeCount(), writes);
}

TEST_F(SpaceHeatTrackerTest, EngagementInTheFirstSpaceAllocatesNothing) {
  start();
  engage(0);
  const std::size_t before = allocationCount();
  desktop_.input().send(KeyDown);
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(SpaceHeatTrackerTest, ClicksAndKeysCountButMovesDoNot) {
  start();
  for (const EventMask type : {LeftMouseDown, RightMouseDown, OtherMouseDown, KeyDown}) {
    defaults_.set("SpaceHeatRecency", {});
    desktop_.activate(desktop_.spaceAt(type == RightMouseDown || type == KeyDown ? 1 : 2));
    desktop_.input().send(type);
    EXPECT_FALSE(stored().isNull()) << type;
  }
  desktop_.activate(desktop_.spaceAt(3));
  defaults_.set("SpaceHeatRecency", {});
  desktop_.input().moveMouse({10, 10});
  desktop_.input().send(LeftMouseDown, EmbeddedInput::Target::OwnWindow);
  EXPECT_TRUE(stored().isNull());
}

TEST_F(SpaceHeatTrackerTest, EngagementInAFullScreenSpaceLeavesTheOrderUnchanged) {
  start();
  engage(0);
  desktop_.activate(desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen));
  desktop_.input().send(KeyDown);
  EXPECT_EQ(stored(), PropertyList(Array{uuid(0)}));
  EXPECT_EQ(posts_, 1);
}

TEST_F(SpaceHeatTrackerTest, AnUnknownActiveSpaceIsNotRecorded) {
  start();
  desktop_.overrideActiveSpace(999);
  SpaceManager::shared().reload();
  desktop_.input().send(KeyDown);
  EXPECT_TRUE(stored().isNull());
}

TEST_F(SpaceHeatTrackerTest, HeatFollowsTheOrderOfEngagement) {
  const SpaceHeatTracker& tracker = start();
  engage(0);
  engage(1);
  engage(2);
  EXPECT_EQ(tracker.heat(uuid(0), kNo), 0.78);
  EXPECT_EQ(tracker.heat(uuid(1), kNo), 1.0);
  EXPECT_EQ(tracker.heat(uuid(2), kNo), 0);
  EXPECT_EQ(tracker.heat(uuid(2), kYes), 1.0);
  EXPECT_EQ(tracker.heat(uuid(1), kYes), 0.78);
  EXPECT_EQ(tracker.heat(uuid(0), kYes), 0.6084);
  EXPECT_EQ(tracker.heat(uuid(3), kYes), 0);
}

TEST_F(SpaceHeatTrackerTest, TheSeventhPlaceIsColdThoughListed) {
  desktop_.setSpaceCount(8);
  const SpaceHeatTracker& tracker = start();
  for (std::size_t place = 8; place-- > 0;) engage(place);
  const double expected[] = {1.0, 0.78, 0.6084, 0.474552, 0.37015056, 0.2887174368, 0, 0};
  for (std::size_t place = 0; place < 8; ++place) {
    EXPECT_EQ(tracker.heat(uuid(place), kYes), expected[place]) << place;
  }
  EXPECT_EQ(stored().asArray()->size(), 8U);
}

TEST_F(SpaceHeatTrackerTest, WithoutAnActiveSpaceNothingIsLeftOut) {
  const SpaceHeatTracker& tracker = start();
  engage(1);
  desktop_.overrideActiveSpace(999);
  SpaceManager::shared().reload();
  EXPECT_EQ(tracker.heat(uuid(1), kNo), 1.0);
}

TEST_F(SpaceHeatTrackerTest, AnEngagedSpaceComesToTheFrontOnce) {
  start();
  engage(0);
  engage(1);
  engage(0);
  EXPECT_EQ(stored(), PropertyList(Array{uuid(0), uuid(1)}));
  EXPECT_EQ(posts_, 3);
}

TEST_F(SpaceHeatTrackerTest, TheThirtyThirdSpacePushesTheOldestOut) {
  desktop_.setSpaceCount(33);
  start();
  for (std::size_t place = 0; place < 33; ++place) engage(place);
  ASSERT_EQ(stored().asArray()->size(), 32U);
  EXPECT_EQ(stored().asArray()->front(), PropertyList(uuid(32)));
  EXPECT_EQ(stored().asArray()->back(), PropertyList(uuid(1)));
}

TEST_F(SpaceHeatTrackerTest, AStoredOrderLongerThanThirtyTwoIsCutToThem) {
  Array order;
  for (int i = 0; i < 40; ++i) order.emplace_back("stored-" + std::to_string(i));
  defaults_.set("SpaceHeatRecency", order);
  start();
  engage(0);
  ASSERT_EQ(stored().asArray()->size(), 32U);
  EXPECT_EQ(stored().asArray()->front(), PropertyList(uuid(0)));
  EXPECT_EQ(stored().asArray()->back(), PropertyList("stored-30"));
}

TEST_F(SpaceHeatTrackerTest, WithHeatOffEveryHeatIsZeroButEngagementIsRecorded) {
  const SpaceHeatTracker& tracker = start();
  PreferencesStore::shared().setHeatMapSigns(false);
  engage(1);
  EXPECT_EQ(tracker.heat(uuid(1), kYes), 0);
  EXPECT_EQ(stored(), PropertyList(Array{uuid(1)}));
  EXPECT_EQ(posts_, 1);
}

TEST_F(SpaceHeatTrackerTest, AStoredOrderIsTakenUp) {
  defaults_.set("SpaceHeatRecency", Array{uuid(2), uuid(1)});
  const SpaceHeatTracker& tracker = start();
  EXPECT_EQ(tracker.heat(uuid(2), kYes), 1.0);
  EXPECT_EQ(tracker.heat(uuid(1), kYes), 0.78);
}

TEST_F(SpaceHeatTrackerTest, AStoredOrderWithANumberAmongItsStringsIsEmpty) {
  defaults_.set("SpaceHeatRecency", Array{uuid(2), 7, uuid(1)});
  EXPECT_EQ(start().heat(uuid(2), kYes), 0);
}

TEST_F(SpaceHeatTrackerTest, AStoredOrderOfAnotherTypeIsEmpty) {
  defaults_.set("SpaceHeatRecency", uuid(2));
  EXPECT_EQ(start().heat(uuid(2), kYes), 0);
}

TEST_F(SpaceHeatTrackerTest, WithoutAMonitorTheStoredOrderStays) {
  defaults_.set("SpaceHeatRecency", Array{uuid(2)});
  desktop_.input().giveMonitors(false);
  const SpaceHeatTracker& tracker = start();
  engage(1);
  EXPECT_EQ(tracker.heat(uuid(2), kYes), 1.0);
  EXPECT_EQ(posts_, 0);
}

TEST_F(SpaceHeatTrackerTest, WithoutThePermissionOnlyClicksCount) {
  start();
  desktop_.setTrusted(false);
  desktop_.input().send(KeyDown);
  EXPECT_EQ(posts_, 0);
  desktop_.input().send(LeftMouseDown);
  EXPECT_EQ(posts_, 1);
}

}  // namespace
}  // namespace vembrix
