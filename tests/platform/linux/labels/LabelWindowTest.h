#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "platform/Application.h"
#include "platform/SignWindow.h"
#include "platform/TourOverlay.h"
#include "platform/WindowServer.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

/// Labels as the X server has them, on a real window manager.
class LabelWindowTest : public testing::Test {
 protected:
  using SpaceID = WindowServer::SpaceID;

  /// The shadow's width around the label, in points.
  static constexpr int kShadow = 24;

  LabelWindowTest() {
    display_.startWindowManager();
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    Application::shared();
  }

  static std::unique_ptr<SignWindow> make(const std::string& text, double width = 300,
                                          double height = 120) {
    auto window = SignWindow::create({.frame = {400, 300, width, height}, .cornerRadius = 40});
    window->view().setText(text);
    window->orderFront();
    return window;
  }

  static std::unique_ptr<TourOverlay> makeOverlay() {
    TourOverlayContent content;
    content.frame = {460, 400, 520, 96};
    content.collectionBehavior = CanJoinAllSpaces;
    content.text = "Stand by";
    auto overlay = TourOverlay::create(content);
    overlay->show(std::chrono::milliseconds(0));
    return overlay;
  }
  /// The overlay's window, when it is seen.
  xcb_window_t overlayWindow() {
    const auto overlays = [&] { return client().windowsOfRole("tour-overlay"); };
    EXPECT_TRUE(
        runUntil([&] { return overlays().size() == 1 && client().isMapped(overlays()[0]); }));
    return overlays()[0];
  }

  std::vector<xcb_window_t> windows() { return client().windowsOfRole("label"); }
  /// Returns the names of the visible labels.
  std::vector<std::string> shown() {
    std::vector<std::string> names;
    for (const xcb_window_t window : windows()) {
      if (client().isMapped(window)) names.push_back(nameOf(window));
    }
    return names;
  }
  std::string nameOf(xcb_window_t window) {
    const auto name = client().property(window, "_NET_WM_NAME");
    return name ? name->bytes : "";
  }
  bool runUntilShown(const std::vector<std::string>& names) {
    return runUntil([&] { return shown() == names; });
  }
  /// Returns the window of the only label, as soon as it is visible.
  xcb_window_t window() {
    EXPECT_TRUE(runUntil([&] { return shown().size() == 1; }));
    const auto found = windows();
    return found.empty() ? XCB_NONE : found.front();
  }

  /// Puts the label in that Space alone.
  static void put(const SignWindow& label, SpaceID space) {
    constexpr std::array<SpaceID, 4> kAll{1, 2, 3, 4};
    std::vector<SpaceID> others;
    std::ranges::remove_copy(kAll, std::back_inserter(others), space);
    server().CGSAddWindowsToSpaces(1, std::array{label.windowNumber()}, std::array{space});
    server().CGSRemoveWindowsFromSpaces(1, std::array{label.windowNumber()}, others);
  }
  static PropertyList spacesOf(const SignWindow& label) {
    return server().CGSCopySpacesForWindows(1, WindowServer::allSpaces,
                                            std::array{label.windowNumber()});
  }
  static PropertyList only(int space) { return PropertyList::Array{space}; }

  static WindowServer& server() { return WindowServer::shared(); }
  X11Client& client() { return display_.client(); }

  TestSession session_;
  PrivateDisplay display_;
};

}  // namespace vembrix
