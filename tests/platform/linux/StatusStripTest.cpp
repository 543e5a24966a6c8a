#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>

#include "platform/Application.h"
#include "platform/StatusItem.h"
#include "platform/linux/PrivateDisplay.h"
#include "platform/linux/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using Geometry = X11Client::Geometry;

StatusItemContent titled(const std::string& title) {
  StatusItemContent content;
  content.label = StatusItemContent::AttributedTitle{title, kBlack};
  content.fill = Srgb{1.0, 0.71, 0.76};
  return content;
}

/// The status item's window as the X server and the window manager have it.
class StatusStripTest : public testing::Test {
 protected:
  StatusStripTest() {
    display_.startWindowManager();
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
  }

  void show(const StatusItemContent& content) {
    if (!item_) item_ = StatusItem::create();
    item_->setContent(content);
    ASSERT_TRUE(runUntil([&] { return !client().windowsOfRole("status-item").empty(); }));
    strip_ = client().windowsOfRole("status-item")[0];
    ASSERT_TRUE(runUntil([&] { return !client().cardinals(strip_, "WM_STATE").empty(); }));
  }

  std::string text(std::string_view property) {
    const auto value = client().property(strip_, property);
    return value ? value->bytes : "";
  }
  Geometry geometry() { return client().geometry(strip_); }
  bool runUntilGeometry(const Geometry& wanted) {
    return runUntil([&] { return geometry() == wanted; });
  }
  /// Top, its start and its end.
  std::vector<std::uint32_t> strut() {
    const auto all = client().cardinals(strip_, "_NET_WM_STRUT_PARTIAL");
    return all.size() == 12 ? std::vector{all[2], all[8], all[9]} : all;
  }

  X11Client& client() { return display_.client(); }

  TestSession session_;
  PrivateDisplay display_;
  std::unique_ptr<StatusItem> item_;
  xcb_window_t strip_ = XCB_WINDOW_NONE;
};

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

TEST_F(StatusStripTest, IsOnAllDesktopsAboveTheOthersAndInNoList) {
  show(titled(" Desktop 1 "));
  EXPECT_THAT(client().cardinals(strip_, "_NET_WM_DESKTOP"), ElementsAre(0xFFFFFFFF));
  EXPECT_THAT(client().atoms(strip_, "_NET_WM_STATE"),
              IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER",
                            "_NET_WM_STATE_ABOVE"}));
}

TEST_F(StatusStripTest, TakesNoFocus) {
  show(titled(" Desktop 1 "));
  // The input hint: set, and no.
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
}

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

}  // namespace
}  // namespace vembrix
