#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/StatusItem.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/Strut.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

inline StatusItemContent titled(const std::string& title) {
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
  X11Client::Geometry geometry() { return client().geometry(strip_); }
  bool runUntilGeometry(const X11Client::Geometry& wanted) {
    return runUntil([&] { return geometry() == wanted; });
  }
  /// Returns the reserved height at the top, and where the reserved part starts and ends.
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
  /// Shows a panel at the top edge that reserves its own height.
  xcb_window_t showPanel(const X11Client::Geometry& place) {
    const xcb_window_t panel = client().showDock(place);
    tellStrut(panel, {0, 0, static_cast<std::uint32_t>(place.height), 0, 0, 0, 0, 0,
                      static_cast<std::uint32_t>(place.x),
                      static_cast<std::uint32_t>(place.x + place.width - 1), 0, 0});
    return panel;
  }

  /// Waits until the window manager has handled the strip.
  static void settle() { runFor(std::chrono::milliseconds(900)); }

  /// Expects one visible strip of 140 points at the top right, with all its hints.
  void expectRestored() {
    const auto isRestored = [&] {
      const auto strips = client().windowsOfRole("status-item");
      if (strips.size() != 1) return false;
      strip_ = strips[0];
      return geometry() == X11Client::Geometry{1300, 0, 140, 24} && client().isViewable(strip_) &&
             client().cardinals(strip_, "_NET_WM_DESKTOP") ==
                 std::vector<std::uint32_t>{0xFFFFFFFF} &&
             strut() == std::vector<std::uint32_t>{24, 1300, 1439} &&
             !client().cardinals(strip_, "_NET_WM_STRUT").empty();
    };
    EXPECT_TRUE(runUntil(isRestored));
    EXPECT_THAT(client().atoms(strip_, "_NET_WM_WINDOW_TYPE"),
                testing::ElementsAre("_NET_WM_WINDOW_TYPE_DOCK"));
    EXPECT_THAT(client().atoms(strip_, "_NET_WM_STATE"),
                testing::IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}));
  }

  TestSession session_;
  PrivateDisplay display_;
  std::unique_ptr<StatusItem> item_;
  xcb_window_t strip_ = XCB_WINDOW_NONE;
};

}  // namespace vembrix
