#include "platform/linux/X11WindowDesktops.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "platform/Application.h"
#include "platform/SignWindow.h"
#include "platform/WindowServer.h"
#include "platform/linux/PrivateDisplay.h"
#include "platform/linux/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsSupersetOf;

/// A label as the window manager has it.
class X11WindowDesktopsTest : public testing::Test {
 protected:
  X11WindowDesktopsTest() {
    display_.startWindowManager();
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    Application::shared();
    window_ = SignWindow::create({.frame = {400, 300, 300, 120}});
    window_->view().setText("Mail");
  }

  void showIn(WindowServer::SpaceID space) {
    window_->orderFront();
    server().CGSAddWindowsToSpaces(1, std::array{number()}, std::array{space});
    ASSERT_TRUE(runUntil([&] { return isListed(); }));
  }

  bool isListed() {
    const auto listed = client().cardinals(client().root(), "_NET_CLIENT_LIST");
    return std::ranges::find(listed, number()) != listed.end();
  }
  std::uint32_t number() { return window_->windowNumber(); }
  static WindowServer& server() { return WindowServer::shared(); }
  PropertyList spaces() {
    return server().CGSCopySpacesForWindows(1, WindowServer::allSpaces, std::array{number()});
  }
  static PropertyList only(int space) { return PropertyList::Array{space}; }
  std::vector<std::uint32_t> desktop() { return client().cardinals(number(), "_NET_WM_DESKTOP"); }
  bool runUntilOn(std::uint32_t index) {
    return runUntil([&] { return desktop() == std::vector{index}; });
  }
  X11Client& client() { return display_.client(); }

  TestSession session_;
  PrivateDisplay display_;
  std::unique_ptr<SignWindow> window_;
};

TEST_F(X11WindowDesktopsTest, ALabelIsOnItsDesktopAboveTheOthersAndInNoList) {
  showIn(3);
  EXPECT_TRUE(runUntilOn(2));
  EXPECT_EQ(client().property(number(), "WM_WINDOW_ROLE")->bytes, "label");
  EXPECT_EQ(client().property(number(), "_NET_WM_NAME")->bytes, "Mail");
  EXPECT_THAT(client().atoms(number(), "_NET_WM_STATE"),
              IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER",
                            "_NET_WM_STATE_ABOVE"}));
  const auto hints = client().cardinals(number(), "WM_HINTS");
  ASSERT_GE(hints.size(), 2U);
  EXPECT_EQ(hints[1], 0U) << "takes no focus";
}

TEST_F(X11WindowDesktopsTest, ItsDesktopIsSaidBeforeItIsShown) {
  window_->orderFront();
  server().CGSAddWindowsToSpaces(1, std::array{number()}, std::array<WindowServer::SpaceID, 1>{4});
  EXPECT_EQ(spaces(), only(4));
  EXPECT_TRUE(runUntilOn(3));
}

TEST_F(X11WindowDesktopsTest, AnotherProgramMovesIt) {
  showIn(2);
  ASSERT_TRUE(runUntilOn(1));
  client().moveToDesktop(number(), 3);
  EXPECT_TRUE(runUntil([&] { return spaces() == only(4); }));
  server().CGSAddWindowsToSpaces(1, std::array{number()}, std::array<WindowServer::SpaceID, 1>{2});
  EXPECT_TRUE(runUntil([&] { return spaces() == only(2); }));
}

TEST_F(X11WindowDesktopsTest, OnAllDesktopsItIsInAllSpacesUntilItIsTakenOutOfTheOthers) {
  showIn(2);
  ASSERT_TRUE(runUntilOn(1));
  client().moveToDesktop(number(), X11WindowDesktops::kAll);
  EXPECT_TRUE(runUntil([&] { return spaces() == PropertyList(PropertyList::Array{1, 2, 3, 4}); }));
  const std::array<WindowServer::SpaceID, 3> others{1, 3, 4};
  server().CGSRemoveWindowsFromSpaces(1, std::array{number()}, others);
  EXPECT_EQ(spaces(), only(2));
  EXPECT_TRUE(runUntilOn(1));
}

TEST_F(X11WindowDesktopsTest, AnAnswerIsSharedWhileNothingChanges) {
  showIn(2);
  runFor(milliseconds(200));
  EXPECT_EQ(spaces().asArray(), spaces().asArray());
}

TEST_F(X11WindowDesktopsTest, OutlivesTheWindowManager) {
  showIn(3);
  ASSERT_TRUE(runUntilOn(2));
  display_.killWindowManager();
  runFor(milliseconds(50));
  display_.startWindowManager();
  ASSERT_TRUE(runUntil([&] { return isListed(); }));
  EXPECT_TRUE(runUntilOn(2));
  EXPECT_TRUE(runUntil([&] { return spaces() == only(3); }));
}

TEST_F(X11WindowDesktopsTest, TellsItsAlphaToWhoeverPutsTheScreenTogether) {
  window_->setAlphaValue(0);
  showIn(1);
  EXPECT_THAT(client().cardinals(number(), "_NET_WM_WINDOW_OPACITY"), ElementsAre(0U));
  window_->animateAlphaValue(1, milliseconds(100));
  EXPECT_TRUE(runUntil([&] {
    return client().cardinals(number(), "_NET_WM_WINDOW_OPACITY") == std::vector{0xFFFFFFFFU};
  }));
}

}  // namespace
}  // namespace vembrix
