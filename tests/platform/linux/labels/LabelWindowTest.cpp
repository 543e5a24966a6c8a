#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/Application.h"
#include "platform/SignWindow.h"
#include "platform/TourOverlay.h"
#include "platform/WindowServer.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;
using testing::Not;
using testing::SizeIs;

/// Labels as the X server has them, on a real window manager.
class LabelWindowTest : public testing::Test {
 protected:
  using SpaceID = WindowServer::SpaceID;

  /// Around the panel.
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
    overlay->show(milliseconds(0));
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
  /// Those that are seen.
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
  /// The window of the only label, when it is seen.
  xcb_window_t window() {
    EXPECT_TRUE(runUntil([&] { return shown().size() == 1; }));
    const auto found = windows();
    return found.empty() ? XCB_NONE : found.front();
  }

  /// The label alone in that Space.
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

TEST_F(LabelWindowTest, IsNoWindowOfTheWindowManagers) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  EXPECT_TRUE(client().isOverrideRedirect(window));
  EXPECT_THAT(client().stack(), Contains(window)) << "nobody has framed it";
  EXPECT_THAT(client().cardinals(client().root(), "_NET_CLIENT_LIST"), Not(Contains(window)));
}

TEST_F(LabelWindowTest, SaysWhatItIs) {
  const auto label = make("Büro [*]");
  const xcb_window_t window = this->window();
  EXPECT_EQ(client().property(window, "WM_CLASS")->bytes, std::string("vembrix\0Vembrix\0", 16));
  EXPECT_EQ(client().property(window, "WM_WINDOW_ROLE")->bytes, "label");
  EXPECT_EQ(nameOf(window), "Büro [*]");
  label->view().setText("Mail");
  EXPECT_TRUE(runUntil([&] { return nameOf(window) == "Mail"; }));
}

TEST_F(LabelWindowTest, StandsWhereItWasToldWithItsShadowAround) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  // From the bottom up: 900 - 300 - 120.
  const X11Client::Geometry expected{400 - kShadow, 480 - kShadow, 300 + 2 * kShadow,
                                     120 + 2 * kShadow};
  EXPECT_EQ(client().geometry(window), expected);
  EXPECT_THAT(client().cardinals(window, "_GTK_FRAME_EXTENTS"),
              ElementsAre(kShadow, kShadow, kShadow, kShadow));
  label->setFrame({500, 300, 200, 120});
  EXPECT_TRUE(runUntil([&] {
    return client().geometry(window) ==
           X11Client::Geometry{500 - kShadow, 480 - kShadow, 200 + 2 * kShadow, 120 + 2 * kShadow};
  }));
}

TEST_F(LabelWindowTest, CostsNoWindowBeforeItIsFirstSeen) {
  const auto elsewhere = make("Elsewhere");
  put(*elsewhere, 3);
  const auto faint = make("Faint");
  faint->setAlphaValue(0);
  const auto seen = make("Seen");
  ASSERT_TRUE(runUntilShown({"Seen"}));
  EXPECT_THAT(windows(), SizeIs(1));
}

TEST_F(LabelWindowTest, IsMappedOnlyInItsSpace) {
  const auto first = make("First");
  const auto third = make("Third");
  put(*third, 3);
  EXPECT_TRUE(runUntilShown({"First"}));
  ASSERT_TRUE(client().goToDesktop(2));
  EXPECT_TRUE(runUntilShown({"Third"}));
  ASSERT_TRUE(client().goToDesktop(1));
  EXPECT_TRUE(runUntilShown({}));
  ASSERT_TRUE(client().goToDesktop(0));
  EXPECT_TRUE(runUntilShown({"First"}));
}

TEST_F(LabelWindowTest, IsMappedOnlyWhileItsAlphaIsAboveZero) {
  const auto label = make("Mail");
  ASSERT_TRUE(runUntilShown({"Mail"}));
  label->animateAlphaValue(0, milliseconds(100));
  EXPECT_TRUE(runUntilShown({}));
  label->setAlphaValue(0.78);
  EXPECT_TRUE(runUntilShown({"Mail"}));
  label->setAlphaValue(0);
  EXPECT_TRUE(runUntilShown({}));
}

TEST_F(LabelWindowTest, MovesFromTheActiveSpaceToAnotherAndBack) {
  const auto label = make("Mail");
  ASSERT_TRUE(runUntilShown({"Mail"}));
  put(*label, 2);
  EXPECT_EQ(spacesOf(*label), only(2));
  EXPECT_TRUE(runUntilShown({}));
  put(*label, 1);
  EXPECT_TRUE(runUntilShown({"Mail"}));
}

TEST_F(LabelWindowTest, NeitherTheFocusNorTheActiveWindowChange) {
  ASSERT_TRUE(client().showWindow("Editor", 600, 400));
  const auto active = client().cardinals(client().root(), "_NET_ACTIVE_WINDOW");
  const xcb_window_t focus = client().focus();
  for (int round = 0; round < 3; ++round) {
    const auto label = make("Mail");
    ASSERT_TRUE(runUntilShown({"Mail"}));
    runFor(milliseconds(50));
    EXPECT_EQ(client().cardinals(client().root(), "_NET_ACTIVE_WINDOW"), active);
    EXPECT_EQ(client().focus(), focus);
  }
}

TEST_F(LabelWindowTest, ClicksGoThroughToWhatIsBelow) {
  ASSERT_TRUE(client().showWindow("Editor", 800, 800));
  client().warpPointer(550, 540);
  const xcb_window_t below = client().windowUnderPointer();
  ASSERT_NE(below, xcb_window_t{XCB_NONE});
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  EXPECT_EQ(client().stack().back(), window) << "it is in front";
  EXPECT_EQ(client().windowUnderPointer(), below);
}

TEST_F(LabelWindowTest, ComesUpInFrontAtEachShowing) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->setAlphaValue(0);
  ASSERT_TRUE(runUntilShown({}));
  const auto other = make("Other");
  ASSERT_TRUE(runUntilShown({"Other"}));
  ASSERT_NE(client().stack().back(), window);
  label->setAlphaValue(1);
  EXPECT_TRUE(runUntil([&] { return client().stack().back() == window; }));
}

TEST_F(LabelWindowTest, TheOverlayStandsAboveALabelThatComesUpLater) {
  const auto overlay = makeOverlay();
  const xcb_window_t above = overlayWindow();
  const auto label = make("Mail");
  ASSERT_TRUE(runUntilShown({"Mail"}));
  EXPECT_TRUE(runUntil([&] { return client().stack().back() == above; }));
}

TEST_F(LabelWindowTest, TheOverlayStandsAboveWhatComesUpAtASwitch) {
  const auto label = make("Mail");
  const xcb_window_t other = window();
  const auto overlay = makeOverlay();
  const xcb_window_t above = overlayWindow();
  for (const std::uint32_t desktop : {1, 2}) {
    // As a window manager that shows where one is.
    client().raise(other);
    ASSERT_TRUE(runUntil([&] { return client().stack().back() == other; }));
    ASSERT_TRUE(client().goToDesktop(desktop));
    EXPECT_TRUE(runUntil([&] { return client().stack().back() == above; })) << desktop;
  }
}

TEST_F(LabelWindowTest, HiddenByAnotherProgramItComesBackAtItsNextShowing) {
  const auto label = make("Mail");
  client().unmap(window());
  ASSERT_TRUE(runUntilShown({}));
  runFor(milliseconds(50));
  EXPECT_THAT(shown(), IsEmpty()) << "as that program wants it";
  label->setAlphaValue(0);
  runFor(milliseconds(20));
  label->setAlphaValue(1);
  EXPECT_TRUE(runUntilShown({"Mail"}));
}

TEST_F(LabelWindowTest, DestroyedByAnotherProgramItComesBackAtItsNextShowing) {
  const auto label = make("Mail");
  const xcb_window_t former = window();
  client().destroy(former);
  ASSERT_TRUE(runUntilShown({}));
  label->setAlphaValue(0);
  runFor(milliseconds(20));
  label->setAlphaValue(1);
  EXPECT_TRUE(runUntilShown({"Mail"}));
  EXPECT_NE(window(), former);
}

TEST_F(LabelWindowTest, KilledByAnotherProgramItComesBackAtItsNextShowing) {
  const auto other = make("Other");
  const auto label = make("Mail");
  ASSERT_TRUE(runUntil([&] { return shown().size() == 2; }));
  client().kill(windows()[0]);
  ASSERT_TRUE(runUntilShown({}));
  label->setAlphaValue(0);
  runFor(milliseconds(20));
  label->setAlphaValue(1);
  EXPECT_TRUE(runUntilShown({"Mail"}));
}

TEST_F(LabelWindowTest, OutlivesTheWindowManagerInItsSpace) {
  const auto label = make("Mail");
  put(*label, 3);
  display_.killWindowManager();
  ASSERT_TRUE(runUntil([&] { return server().CGSGetActiveSpace(1) == 0; }));
  EXPECT_EQ(spacesOf(*label), only(3));
  display_.startWindowManager();
  ASSERT_TRUE(client().goToDesktop(2));
  EXPECT_TRUE(runUntilShown({"Mail"}));
}

TEST_F(LabelWindowTest, WithoutAWindowManagerNoneIsSeen) {
  const auto label = make("Mail");
  ASSERT_TRUE(runUntilShown({"Mail"}));
  display_.killWindowManager();
  EXPECT_TRUE(runUntilShown({}));
}

TEST_F(LabelWindowTest, IsInTheActiveSpaceAfterItsOwnHasVanished) {
  const auto label = make("Mail");
  put(*label, 4);
  ASSERT_TRUE(client().setDesktopCount(2));
  EXPECT_TRUE(runUntil([&] { return spacesOf(*label) == only(1); }));
  EXPECT_TRUE(runUntilShown({"Mail"}));
}

TEST_F(LabelWindowTest, MayBeInSeveralSpaces) {
  const auto label = make("Mail");
  server().CGSAddWindowsToSpaces(1, std::array{label->windowNumber()},
                                 std::array<SpaceID, 2>{2, 4});
  EXPECT_EQ(spacesOf(*label), PropertyList(PropertyList::Array{1, 2, 4}));
  ASSERT_TRUE(client().goToDesktop(3));
  EXPECT_TRUE(runUntilShown({"Mail"}));
  ASSERT_TRUE(client().goToDesktop(2));
  EXPECT_TRUE(runUntilShown({}));
}

TEST_F(LabelWindowTest, AnAnswerIsSharedWhileNothingChanges) {
  const auto label = make("Mail");
  EXPECT_EQ(spacesOf(*label).asArray(), spacesOf(*label).asArray());
}

TEST_F(LabelWindowTest, TheServerKeepsAFewPicturesAndNotAll) {
  std::vector<std::unique_ptr<SignWindow>> labels;
  for (int i = 0; i < 16; ++i) {
    labels.push_back(make(std::to_string(i), 1000, 400));
    ASSERT_TRUE(runUntilShown({std::to_string(i)}));
    labels.back()->setAlphaValue(0);
    ASSERT_TRUE(runUntilShown({}));
  }
  EXPECT_THAT(windows(), SizeIs(Gt(2U)));
  EXPECT_THAT(windows(), SizeIs(Lt(8U)));
  labels.front()->setAlphaValue(1);
  EXPECT_TRUE(runUntilShown({"0"})) << "one whose picture is gone is made anew";
}

// With a compositor

class CompositedLabelTest : public LabelWindowTest {
 protected:
  CompositedLabelTest() { client().claimCompositing(); }

  std::vector<std::uint32_t> opacity(xcb_window_t window) {
    return client().cardinals(window, "_NET_WM_WINDOW_OPACITY");
  }
};

TEST_F(CompositedLabelTest, TellsItsAlphaToWhoeverPutsTheScreenTogether) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  EXPECT_THAT(opacity(window), ElementsAre(0xFFFFFFFFU));
  label->setAlphaValue(0.5);
  EXPECT_TRUE(runUntil([&] { return opacity(window) == std::vector{0x80000000U}; }));
}

TEST_F(CompositedLabelTest, ComesUpAsFaintAsItIs) {
  const auto label = make("Mail");
  label->setAlphaValue(0.25);
  const xcb_window_t window = this->window();
  EXPECT_THAT(opacity(window), ElementsAre(0x40000000U));
}

TEST_F(CompositedLabelTest, ItsFadeGoesOnWhileTheProgramIsBusy) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->animateAlphaValue(0.2, milliseconds(1500));
  ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xFFFFFFFFU; }));
  const std::uint32_t before = opacity(window)[0];
  // No event is read meanwhile.
  std::this_thread::sleep_for(milliseconds(300));
  EXPECT_LT(opacity(window)[0], before);
}

TEST_F(CompositedLabelTest, AFadeThatIsBrokenOffDoesNotComeThrough) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  for (int round = 0; round < 5; ++round) {
    label->animateAlphaValue(0.1, milliseconds(400));
    ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xE0000000U; }));
    label->setAlphaValue(1);
    ASSERT_TRUE(runUntil([&] { return opacity(window)[0] == 0xFFFFFFFFU; }));
    runFor(milliseconds(100));
    EXPECT_THAT(opacity(window), ElementsAre(0xFFFFFFFFU));
  }
}

TEST_F(CompositedLabelTest, AFadeInThePlaceOfAnotherEndsWhereItIsTo) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->animateAlphaValue(0.1, std::chrono::seconds(1));
  ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xE0000000U; }));
  label->animateAlphaValue(0.5, milliseconds(200));
  runFor(milliseconds(1200));
  EXPECT_THAT(opacity(window), ElementsAre(0x80000000U));
}

TEST_F(CompositedLabelTest, TwoFadeAtTheSameTime) {
  const auto first = make("First");
  const auto second = make("Second");
  ASSERT_TRUE(runUntil([&] { return shown().size() == 2; }));
  first->animateAlphaValue(0.5, milliseconds(300));
  second->animateAlphaValue(0.5, milliseconds(300));
  EXPECT_TRUE(runUntil([&] {
    return std::ranges::all_of(windows(), [&](xcb_window_t window) {
      return opacity(window) == std::vector{0x80000000U};
    });
  }));
}

TEST_F(CompositedLabelTest, HiddenOnTheWayOutItComesBackAsItIs) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->animateAlphaValue(0.1, milliseconds(500));
  ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xE0000000U; }));
  ASSERT_TRUE(client().goToDesktop(1));
  ASSERT_TRUE(runUntilShown({}));
  label->setAlphaValue(1);
  ASSERT_TRUE(client().goToDesktop(0));
  ASSERT_TRUE(runUntilShown({"Mail"}));
  runFor(milliseconds(500));
  EXPECT_THAT(opacity(window), ElementsAre(0xFFFFFFFFU));
}

TEST_F(CompositedLabelTest, FadesStepByStep) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  std::vector<std::uint32_t> seen;
  label->animateAlphaValue(0, milliseconds(400));
  EXPECT_TRUE(runUntil([&] {
    const auto now = opacity(window);
    if (!now.empty() && (seen.empty() || seen.back() != now[0])) seen.push_back(now[0]);
    return shown().empty();
  }));
  EXPECT_THAT(seen, SizeIs(Gt(4U)));
  EXPECT_TRUE(std::ranges::is_sorted(seen, std::greater()));
}

}  // namespace
}  // namespace vembrix
