#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <memory>

#include "platform/StatusItem.h"
#include "platform/linux/menubar/strip/StatusStripTest.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

/// A strip beside a large window, with a window manager that ignores panels.
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

}  // namespace
}  // namespace vembrix
