#include "platform/linux/labels/LabelWindowTest.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/SignWindow.h"
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
  // Counted from the bottom: 900 - 300 - 120.
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

}  // namespace
}  // namespace vembrix
