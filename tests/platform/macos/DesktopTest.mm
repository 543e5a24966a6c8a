#import <AppKit/AppKit.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "platform/Accessibility.h"
#include "platform/Application.h"
#include "platform/EventTap.h"
#include "platform/InputMonitor.h"
#include "platform/Screens.h"
#include "platform/SignWindow.h"
#include "platform/WindowServer.h"
#import "platform/macos/support/Conversions.h"
#include "platform/macos/support/RunLoop.h"

namespace vembrix {
namespace {

using testing::Contains;

/// Facts that hold on every desktop, with and without permissions. Changes nothing.
class DesktopTest : public testing::Test {
 protected:
  using SpaceID = WindowServer::SpaceID;

  DesktopTest() { Application::shared(); }
  void SetUp() override {
    if (NSScreen.screens.count == 0) GTEST_SKIP() << "a session without a screen";
  }

  PropertyList displays() { return server_.CGSCopyManagedDisplaySpaces(connection_); }
  SpaceID active() { return server_.CGSGetActiveSpace(connection_); }

  std::set<SpaceID> listedSpaces() {
    std::set<SpaceID> ids;
    const PropertyList all = displays();
    if (!all.asArray()) return ids;
    for (const PropertyList& display : *all.asArray()) {
      const PropertyList& spaces = display["Spaces"];
      if (!spaces.asArray()) continue;
      for (const PropertyList& space : *spaces.asArray()) {
        ids.insert(static_cast<SpaceID>(space["ManagedSpaceID"].integer().value_or(0)));
      }
    }
    return ids;
  }

  PropertyList windows() {
    return server_.CGWindowListCopyWindowInfo(WindowServer::onScreenOnly |
                                              WindowServer::excludeDesktopElements);
  }

  /// Returns the bounds of this process's window of that width; null if it is not listed.
  PropertyList boundsOf(double width) {
    const PropertyList owner = utf8String(NSProcessInfo.processInfo.processName);
    const PropertyList all = windows();
    if (!all.asArray()) return {};
    for (const PropertyList& window : *all.asArray()) {
      const PropertyList& bounds = window["kCGWindowBounds"];
      if (window["kCGWindowOwnerName"] == owner && bounds["Width"].number() == width) {
        return bounds;
      }
    }
    return {};
  }

  WindowServer& server_ = WindowServer::shared();
  WindowServer::ConnectionID connection_ = server_.CGSMainConnectionID();
};

TEST_F(DesktopTest, HasOneConnectionForTheProcess) {
  EXPECT_NE(connection_, 0);
  EXPECT_EQ(server_.CGSMainConnectionID(), connection_);
}

TEST_F(DesktopTest, EachDisplayTellsItsSpaces) {
  const PropertyList all = displays();
  ASSERT_NE(all.asArrayOfDictionaries(), nullptr);
  ASSERT_FALSE(all.asArray()->empty());
  for (const PropertyList& display : *all.asArray()) {
    EXPECT_NE(display["Display Identifier"].asString(), nullptr);
    const PropertyList& spaces = display["Spaces"];
    ASSERT_NE(spaces.asArrayOfDictionaries(), nullptr);
    for (const PropertyList& space : *spaces.asArray()) {
      EXPECT_GT(space["ManagedSpaceID"].integer().value_or(0), 0);
      EXPECT_EQ(space["id64"].integer(), space["ManagedSpaceID"].integer());
      EXPECT_NE(space["uuid"].asString(), nullptr);
      EXPECT_NE(space["type"].integer(), std::nullopt);
    }
  }
}

TEST_F(DesktopTest, TheActiveSpaceIsAListedOne) { EXPECT_THAT(listedSpaces(), Contains(active())); }

TEST_F(DesktopTest, AnswersOfAnUnchangedDesktopShareTheirContents) {
  EXPECT_EQ(displays().asArray(), displays().asArray());
}

TEST_F(DesktopTest, UnknownSpacesDisplaysAndWindowsAreIgnored) {
  const SpaceID before = active();
  constexpr WindowServer::WindowNumber kUnknown = 0xFFFFFF00;
  server_.CGSManagedDisplaySetCurrentSpace(connection_, "No such display", before);
  server_.CGSAddWindowsToSpaces(connection_, std::array{kUnknown}, std::array{before});
  server_.CGSRemoveWindowsFromSpaces(connection_, std::array{kUnknown}, std::array{before});
  const PropertyList spaces =
      server_.CGSCopySpacesForWindows(connection_, WindowServer::allSpaces, std::array{kUnknown});
  EXPECT_TRUE(spaces.isNull() || spaces.asArray()->empty());
  EXPECT_EQ(active(), before);
}

TEST_F(DesktopTest, AWindowIsBornInTheActiveSpace) {
  const auto window = SignWindow::create({.frame = {100, 100, 30, 12}});
  window->setAlphaValue(0);
  window->orderFront();
  const auto isThere = [&] {
    const PropertyList spaces = server_.CGSCopySpacesForWindows(
        connection_, WindowServer::allSpaces, std::array{window->windowNumber()});
    return spaces == PropertyList(PropertyList::Array{static_cast<std::int64_t>(active())});
  };
  EXPECT_TRUE(runUntil(isThere));
}

TEST_F(DesktopTest, ListsAWindowWithItsBounds) {
  const auto window = SignWindow::create({.frame = {100, 100, 123, 45}});
  window->setAlphaValue(0.01);
  window->orderFront();
  ASSERT_TRUE(runUntil([&] { return !boundsOf(123).isNull(); }));
  EXPECT_EQ(boundsOf(123)["Height"].number(), 45);
  EXPECT_EQ(boundsOf(123)["X"].number(), 100);
  // Counted from the top of the primary screen, as the window server does.
  EXPECT_EQ(boundsOf(123)["Y"].number(), Screens::shared().all()[0].frame.height - 145);
  window->setFrame({100, 100, 234, 45});
  EXPECT_TRUE(runUntil([&] { return !boundsOf(234).isNull(); }));
  EXPECT_TRUE(boundsOf(123).isNull());
}

TEST_F(DesktopTest, AnUnchangedWindowListSharesItsContents) {
  // Other programs may change the list at any time, but not all the time.
  const auto isShared = [&] { return windows().asArray() == windows().asArray(); };
  EXPECT_TRUE(runUntil(isShared));
}

TEST_F(DesktopTest, ThePointerIsOnAScreen) {
  const Point location = InputMonitor::shared().mouseLocation();
  const auto holds = [&](const Screen& screen) {
    const Rect& frame = screen.frame;
    return location.x >= frame.x && location.x <= frame.x + frame.width && location.y >= frame.y &&
           location.y <= frame.y + frame.height;
  };
  EXPECT_TRUE(std::ranges::any_of(Screens::shared().all(), holds))
      << location.x << ", " << location.y;
}

TEST_F(DesktopTest, MonitorsMayComeAndGo) {
  for (const std::uint64_t mask : {std::uint64_t{LeftMouseDown}, std::uint64_t{KeyDown},
                                   std::uint64_t{LeftMouseDown | KeyDown | MouseMoved}}) {
    Token first = InputMonitor::shared().addGlobalMonitor(mask, [] {});
    const Token second = InputMonitor::shared().addGlobalMonitor(mask, [] {});
    first.reset();
  }
}

TEST_F(DesktopTest, WithoutThePermissionThereIsNoTapOrOneThatEndsWithItsOwner) {
  auto tap = EventTap::create([](std::uint32_t, const TappedEvent&) {});
  if (!tap) return;
  tap->enable();
  tap->enable();
  runFor(std::chrono::milliseconds(20));
  tap.reset();
  runFor(std::chrono::milliseconds(20));
}

TEST_F(DesktopTest, ThePermissionDoesNotChangeByItself) {
  Accessibility& accessibility = Accessibility::shared();
  EXPECT_EQ(accessibility.isProcessTrusted(Accessibility::Prompt::No),
            accessibility.isProcessTrusted(Accessibility::Prompt::No));
}

}  // namespace
}  // namespace vembrix
