#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <memory>
#include <string>

#include "platform/Application.h"
#include "platform/StatusItem.h"
#include "platform/UserDefaults.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/Strut.h"
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

  static StatusItemContent narrow() {
    StatusItemContent content = titled(" A ");
    content.length = StatusItemLength::fixed(140);
    return content;
  }

  void tellStrut(xcb_window_t window, const Strut& strut) {
    client().setProperty(
        window, "_NET_WM_STRUT_PARTIAL",
        {"CARDINAL", 32, std::string(reinterpret_cast<const char*>(strut.data()), sizeof(strut))});
  }
  /// At the top edge, of which it keeps its own height free.
  xcb_window_t showPanel(const Geometry& place) {
    const xcb_window_t panel = client().showDock(place);
    tellStrut(panel, {0, 0, static_cast<std::uint32_t>(place.height), 0, 0, 0, 0, 0,
                      static_cast<std::uint32_t>(place.x),
                      static_cast<std::uint32_t>(place.x + place.width - 1), 0, 0});
    return panel;
  }

  /// Until the window manager has made of the strip what it makes of it.
  static void settle() { runFor(milliseconds(900)); }

  /// One strip of 140 points at the top right, seen, with all its hints.
  void expectRestored() {
    const auto isRestored = [&] {
      const auto strips = client().windowsOfRole("status-item");
      if (strips.size() != 1) return false;
      strip_ = strips[0];
      return geometry() == Geometry{1300, 0, 140, 24} && client().isViewable(strip_) &&
             client().cardinals(strip_, "_NET_WM_DESKTOP") ==
                 std::vector<std::uint32_t>{0xFFFFFFFF} &&
             strut() == std::vector<std::uint32_t>{24, 1300, 1439} &&
             !client().cardinals(strip_, "_NET_WM_STRUT").empty();
    };
    EXPECT_TRUE(runUntil(isRestored));
    EXPECT_THAT(client().atoms(strip_, "_NET_WM_WINDOW_TYPE"),
                ElementsAre("_NET_WM_WINDOW_TYPE_DOCK"));
    EXPECT_THAT(client().atoms(strip_, "_NET_WM_STATE"),
                IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}));
  }

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

/// Beside a window manager that leaves panels to themselves.
class UnmanagedStripTest : public testing::Test {
 protected:
  UnmanagedStripTest() {
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    window_ = client().showDock({0, 0, 1440, 900});
    client().deleteProperty(window_, "_NET_WM_WINDOW_TYPE");
    client().setWindow(client().root(), "_NET_ACTIVE_WINDOW", window_);
    item_ = StatusItem::create();
    item_->setContent(titled(" Desktop 1 "));
  }

  bool runUntilCovered(bool isCovered) {
    return runUntil([&] {
      const auto strips = client().windowsOfRole("status-item");
      const auto stack = client().stack();
      const auto place = [&](xcb_window_t window) { return std::ranges::find(stack, window); };
      return !strips.empty() && client().isViewable(strips[0]) &&
             (place(strips[0]) < place(window_)) == isCovered;
    });
  }
  void fill() { client().setAtom(window_, "_NET_WM_STATE", "_NET_WM_STATE_FULLSCREEN"); }

  X11Client& client() { return display_.client(); }

  TestSession session_;
  PrivateDisplay display_;
  std::unique_ptr<StatusItem> item_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(UnmanagedStripTest, AWindowThatFillsTheScreenCoversItForAsLongAsItDoes) {
  ASSERT_TRUE(runUntilCovered(false));
  fill();
  EXPECT_TRUE(runUntilCovered(true));
  client().deleteProperty(window_, "_NET_WM_STATE");
  EXPECT_TRUE(runUntilCovered(false));
}

TEST_F(UnmanagedStripTest, AWindowThatFillsTheScreenCoversItAlsoWithoutTheFocusUntilItGoes) {
  ASSERT_TRUE(runUntilCovered(false));
  fill();
  ASSERT_TRUE(runUntilCovered(true));
  client().deleteProperty(client().root(), "_NET_ACTIVE_WINDOW");
  runFor(milliseconds(200));
  EXPECT_TRUE(runUntilCovered(true));
  client().unmap(window_);
  EXPECT_TRUE(runUntilCovered(false));
}

/// What is on the screen.
class StripPictureTest : public StatusStripTest {
 protected:
  /// In the middle of the strip's left end, beside its text.
  QRgb color() {
    const Geometry place = geometry();
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    return screen.pixel(place.x + 3, place.y + place.height / 2);
  }
  bool runUntilColor(QRgb wanted) {
    return runUntil([&] { return color() == wanted; });
  }

  static StatusItemContent filled(const Srgb& fill, double width = 140) {
    StatusItemContent content = narrow();
    content.fill = fill;
    content.length = StatusItemLength::fixed(width);
    return content;
  }

  static constexpr Srgb kRed{1, 0, 0};
  static constexpr Srgb kBlue{0, 0, 1};
  static constexpr QRgb kRedPixel = 0xFFFF0000;
  static constexpr QRgb kBluePixel = 0xFF0000FF;
};

TEST_F(StripPictureTest, FollowsItsContent) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  item_->setContent(filled(kBlue));
  EXPECT_TRUE(runUntilColor(kBluePixel));
  item_->setContent(filled(kRed));
  EXPECT_TRUE(runUntilColor(kRedPixel)) << "a look that was seen before";
}

TEST_F(StripPictureTest, FollowsItsContentAndItsWidth) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  item_->setContent(filled(kBlue, 200));
  ASSERT_TRUE(runUntilGeometry({1240, 0, 200, 24}));
  EXPECT_TRUE(runUntilColor(kBluePixel));
  item_->setContent(filled(kRed, 100));
  ASSERT_TRUE(runUntilGeometry({1340, 0, 100, 24}));
  EXPECT_TRUE(runUntilColor(kRedPixel));
}

TEST_F(StripPictureTest, ManyLooksAreFollowedToo) {
  show(filled(kRed));
  // More than the server keeps.
  for (int i = 0; i < 100; ++i) item_->setContent(filled({0, i / 100.0, 0}));
  item_->setContent(filled(kRed));
  EXPECT_TRUE(runUntilColor(kRedPixel));
}

TEST_F(StripPictureTest, IsWholeAgainAfterItWasCoveredWithoutTheProgram) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  const Geometry place = geometry();
  QWidget cover(nullptr, Qt::Window | Qt::X11BypassWindowManagerHint);
  cover.setGeometry(place.x, place.y, place.width, place.height);
  cover.setStyleSheet(QStringLiteral("background: blue"));
  cover.show();
  ASSERT_TRUE(runUntilColor(kBluePixel));
  cover.hide();
  // No event is read in between.
  EXPECT_EQ(color(), kRedPixel);
}

TEST_F(StripPictureTest, IsWholeInAWindowThatWasMadeAnew) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  client().unmap(strip_);
  expectRestored();
  EXPECT_TRUE(runUntilColor(kRedPixel));
}

TEST_F(StripPictureTest, NoWindowManagerWaitsForItToPaint) {
  show(filled(kRed));
  EXPECT_THAT(client().atoms(strip_, "WM_PROTOCOLS"),
              AllOf(Contains("WM_DELETE_WINDOW"), Contains("_NET_WM_PING"),
                    Not(Contains("_NET_WM_SYNC_REQUEST"))));
}

TEST(StripOfABusyStartTest, ComesUpThoughTheWindowManagerHasMissedIt) {
  TestSession session;
  PrivateDisplay display;
  TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
  X11Client& client = display.client();
  client.ignoreRequests(true);
  // Asks the server, which has heard of the other by then.
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
