#include "platform/linux/menubar/strip/StatusStripTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/StatusItem.h"
#include "platform/UserDefaults.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using Geometry = X11Client::Geometry;

TEST_F(StatusStripTest, SaysWhatItIs) {
  show(titled(" Desktop 1 "));
  EXPECT_EQ(text("WM_CLASS"), std::string("vembrix\0Vembrix\0", 16));
  EXPECT_EQ(text("WM_WINDOW_ROLE"), "status-item");
  EXPECT_EQ(text("_NET_WM_NAME"), "Desktop 1");
  EXPECT_THAT(client().atoms(strip_, "_NET_WM_WINDOW_TYPE"),
              ElementsAre("_NET_WM_WINDOW_TYPE_DOCK"));
}

TEST_F(StatusStripTest, ItsNameFollowsItsTitle) {
  show(titled(" Desktop 1 "));
  show(titled(" Büro [*] "));
  EXPECT_TRUE(runUntil([&] { return text("_NET_WM_NAME") == "Büro [*]"; }));
}

TEST_F(StatusStripTest, IsOnAllDesktopsAndInNoList) {
  show(titled(" Desktop 1 "));
  EXPECT_THAT(client().cardinals(strip_, "_NET_WM_DESKTOP"), ElementsAre(0xFFFFFFFF));
  EXPECT_THAT(client().atoms(strip_, "_NET_WM_STATE"),
              AllOf(IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}),
                    Not(Contains("_NET_WM_STATE_ABOVE"))))
      << "a window that fills the screen covers it";
}

TEST_F(StatusStripTest, TakesNoFocus) {
  show(titled(" Desktop 1 "));
  // The input hint is present and says no.
  const auto hints = client().cardinals(strip_, "WM_HINTS");
  ASSERT_GE(hints.size(), 2U);
  EXPECT_EQ(hints[0] & 1U, 1U);
  EXPECT_EQ(hints[1], 0U);
  EXPECT_THAT(client().cardinals(client().root(), "_NET_ACTIVE_WINDOW"),
              testing::Not(Contains(strip_)));
}

TEST_F(StatusStripTest, SitsAtTheTopRightAndReservesItsPlace) {
  show(titled(" Desktop 1 "));
  const Geometry place = geometry();
  EXPECT_EQ(place.x + place.width, 1440);
  EXPECT_EQ(place.y, 0);
  EXPECT_EQ(place.height, 24);
  EXPECT_THAT(strut(), ElementsAre(24, place.x, 1439));
  EXPECT_THAT(client().cardinals(strip_, "_NET_WM_STRUT"), ElementsAre(0, 0, 24, 0))
      << "for window managers that know the older property only";
}

// Its neighbours

TEST_F(StatusStripTest, StandsBelowAPanelThatIsThere) {
  showPanel({0, 0, 1440, 30});
  show(narrow());
  EXPECT_TRUE(runUntilGeometry({1300, 30, 140, 24}));
  EXPECT_TRUE(runUntil([&] { return strut() == std::vector<std::uint32_t>{54, 1300, 1439}; }));
}

TEST_F(StatusStripTest, GivesWayToAPanelThatComesGrowsAndGoes) {
  show(narrow());
  ASSERT_TRUE(runUntilGeometry({1300, 0, 140, 24}));
  const xcb_window_t panel = showPanel({0, 0, 1440, 30});
  EXPECT_TRUE(runUntilGeometry({1300, 30, 140, 24}));
  tellStrut(panel, {0, 0, 50, 0, 0, 0, 0, 0, 0, 1439, 0, 0});
  EXPECT_TRUE(runUntilGeometry({1300, 50, 140, 24}));
  client().destroy(panel);
  EXPECT_TRUE(runUntilGeometry({1300, 0, 140, 24}));
}

TEST_F(StatusStripTest, StandsBesideAPanelInItsCorner) {
  show(narrow());
  const xcb_window_t panel = client().showDock({1240, 0, 200, 30});
  tellStrut(panel, {0, 0, 30, 0, 0, 0, 0, 0, 1240, 1439, 0, 0});
  EXPECT_TRUE(runUntilGeometry({1100, 0, 140, 24}));
}

TEST_F(StatusStripTest, OnAPanelItKeepsNothingFreeAndIsAbove) {
  UserDefaults::standard().set(
      "LinuxStatusItemPlaces",
      PropertyList::Dictionary{{"1440x900+0+0", PropertyList::Dictionary{{"Monitor", 0},
                                                                         {"Edge", "top"},
                                                                         {"Side", "left"},
                                                                         {"Offset", 500},
                                                                         {"OnPanel", true}}}});
  const xcb_window_t panel = showPanel({0, 0, 1440, 30});
  show(narrow());
  EXPECT_TRUE(runUntilGeometry({500, 3, 140, 24}));
  EXPECT_TRUE(runUntil([&] { return strut() == std::vector<std::uint32_t>{0, 0, 0}; }));
  const auto isAbove = [&] {
    const auto stack = client().cardinals(client().root(), "_NET_CLIENT_LIST_STACKING");
    const auto place = [&](xcb_window_t window) {
      return std::find(stack.begin(), stack.end(), window);
    };
    return place(strip_) != stack.end() && place(strip_) > place(panel);
  };
  EXPECT_TRUE(runUntil(isAbove));
  client().raise(panel);
  runFor(milliseconds(100));
  EXPECT_TRUE(runUntil(isAbove)) << "also after the panel has been raised";
  client().destroy(panel);
  EXPECT_TRUE(runUntilGeometry({500, 0, 140, 24}));
  EXPECT_TRUE(runUntil([&] { return strut() == std::vector<std::uint32_t>{24, 500, 639}; }));
}

// What others do to it

TEST_F(StatusStripTest, IsNotClosed) {
  show(titled(" Desktop 1 "));
  const Geometry place = geometry();
  client().close(strip_);
  runFor(milliseconds(300));
  EXPECT_EQ(client().windowsOfRole("status-item"), std::vector{strip_});
  EXPECT_EQ(geometry(), place);
}

TEST_F(StatusStripTest, ComesBackWithAllItsHintsWhenUnmapped) {
  show(narrow());
  settle();
  client().unmap(strip_);
  expectRestored();
}

TEST_F(StatusStripTest, ComesBackWhenAnotherWindowSwallowsIt) {
  show(narrow());
  const xcb_window_t swallower = client().showDock({0, 700, 300, 200});
  ASSERT_TRUE(runUntil([&] { return !client().cardinals(swallower, "WM_STATE").empty(); }));
  settle();
  client().reparent(strip_, swallower);
  expectRestored();
}

TEST_F(StatusStripTest, ComesBackWhenItIsDestroyed) {
  show(narrow());
  settle();
  client().destroy(strip_);
  expectRestored();
}

TEST_F(StatusStripTest, TakesItsHintsBack) {
  show(narrow());
  settle();
  client().deleteProperty(strip_, "_NET_WM_STRUT");
  client().deleteProperty(strip_, "_NET_WM_STRUT_PARTIAL");
  client().deleteProperty(strip_, "_NET_WM_WINDOW_TYPE");
  client().moveToDesktop(strip_, 1);
  expectRestored();
}

// Its place

TEST_F(StatusStripTest, MovesWithTheWidthOfItsTitle) {
  show(titled(" A "));
  const int narrow = geometry().width;
  StatusItemContent content = titled(" A ");
  content.length = StatusItemLength::fixed(140);
  show(content);
  ASSERT_LT(narrow, 140);
  EXPECT_TRUE(runUntilGeometry({1300, 0, 140, 24}));
  EXPECT_TRUE(runUntil([&] { return strut() == std::vector<std::uint32_t>{24, 1300, 1439}; }));
}

TEST_F(StatusStripTest, FollowsTheScreen) {
  StatusItemContent content = titled(" A ");
  content.length = StatusItemLength::fixed(140);
  show(content);
  ASSERT_TRUE(client().resizeScreen(1200, 800));
  EXPECT_TRUE(runUntilGeometry({1060, 0, 140, 24}));
  EXPECT_TRUE(runUntil([&] { return strut() == std::vector<std::uint32_t>{24, 1060, 1199}; }));
}

TEST_F(StatusStripTest, IsTwiceAsLargeAtTwiceTheScale) {
  TestSession::setVariable("QT_SCALE_FACTOR", "2");
  StatusItemContent content = titled(" A ");
  content.length = StatusItemLength::fixed(140);
  show(content);
  EXPECT_TRUE(runUntilGeometry({1160, 0, 280, 48}));
  EXPECT_THAT(strut(), ElementsAre(48, 1160, 1439));
}

TEST_F(StatusStripTest, OutlivesTheWindowManager) {
  StatusItemContent content = titled(" A ");
  content.length = StatusItemLength::fixed(140);
  show(content);
  display_.killWindowManager();
  runFor(milliseconds(50));
  display_.startWindowManager();
  ASSERT_TRUE(runUntil([&] {
    return client().cardinals(client().root(), "_NET_WORKAREA").at(1) == 24;
  })) << "the new one heeds the strip";
  EXPECT_EQ(geometry(), (Geometry{1300, 0, 140, 24}));
  EXPECT_THAT(client().cardinals(strip_, "_NET_WM_DESKTOP"), ElementsAre(0xFFFFFFFF));
  EXPECT_THAT(client().atoms(strip_, "_NET_WM_STATE"),
              IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}));
}

TEST(StripOfABusyStartTest, ComesUpThoughTheWindowManagerHasMissedIt) {
  TestSession session;
  PrivateDisplay display;
  TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
  X11Client& client = display.client();
  client.ignoreRequests(true);
  // Waits for the server, which has received the other client's request by then.
  ASSERT_EQ(client.windowsOfRole("status-item").size(), 0U);
  const std::unique_ptr<StatusItem> item = StatusItem::create();
  item->setContent(titled(" Desktop 1 "));
  const auto isSeen = [&] {
    const auto strips = client.windowsOfRole("status-item");
    return strips.size() == 1 && client.isViewable(strips[0]);
  };
  runFor(milliseconds(1000));
  ASSERT_FALSE(isSeen());
  client.ignoreRequests(false);
  EXPECT_TRUE(runUntil(isSeen));
}

}  // namespace
}  // namespace vembrix
