#include "platform/linux/x11/X11Input.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QMouseEvent>
#include <QWidget>
#include <chrono>

#include "platform/Application.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

constexpr std::uint64_t kPresses = LeftMouseDown | RightMouseDown | OtherMouseDown | KeyDown;

/// Distinguishes input to other programs from all other events.
class X11InputTest : public testing::Test {
 protected:
  X11InputTest() {
    display_.startWindowManager();
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    Application::shared();
    EXPECT_TRUE(client().showWindow("Editor", 600, 400));
    client().movePointer(300, 200);
  }

  X11Client& client() { return display_.client(); }

  void watch(std::uint64_t mask) {
    monitor_ = X11Input::shared().addGlobalMonitor(mask, [this] { told_ += 1; });
  }
  int toldInAll() {
    runFor(milliseconds(150));
    return std::exchange(told_, 0);
  }

  /// Shows a window of this program where it does not cover the other program's.
  static void show(QWidget& window) {
    window.setGeometry(800, 500, 200, 100);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(runUntil([&] { return window.isActiveWindow(); }));
  }

  TestSession session_;
  PrivateDisplay display_;
  Token monitor_;
  int told_ = 0;
};

TEST_F(X11InputTest, ScrollingIsNoClick) {
  watch(kPresses | MouseMoved);
  toldInAll();
  for (std::uint8_t button = 4; button <= 7; ++button) client().clickButton(button);
  EXPECT_EQ(toldInAll(), 0);
  for (const std::uint8_t button : {8, 9}) client().clickButton(button);
  EXPECT_EQ(toldInAll(), 2);
}

TEST_F(X11InputTest, APointerThatAProgramPutsElsewhereHasMoved) {
  watch(MouseMoved);
  toldInAll();
  client().warpPointer(2, 700);
  EXPECT_EQ(toldInAll(), 1);
  client().warpPointer(0, 0);
  EXPECT_EQ(toldInAll(), 1);
  EXPECT_EQ(toldInAll(), 0);
}

TEST_F(X11InputTest, WhatGoesToOwnWindowsDoesNotCount) {
  QWidget window;
  watch(kPresses | MouseMoved);
  show(window);
  toldInAll();
  client().movePointer(850, 550);
  toldInAll();
  // Sent at once, like the devices of a quick user.
  client().movePointer(860, 555);
  for (const std::uint8_t button : {1, 2, 3, 9}) client().clickButton(button);
  client().pressKey();
  EXPECT_EQ(toldInAll(), 0);
}

class ClickedWindow : public QWidget {
 public:
  [[nodiscard]] int clicks() const { return clicks_; }

 protected:
  void mousePressEvent(QMouseEvent* /*event*/) override { clicks_ += 1; }

 private:
  int clicks_ = 0;
};

TEST_F(X11InputTest, AClickRightAfterThePointerCameOrWentIsNotMistaken) {
  ClickedWindow window;
  show(window);
  watch(LeftMouseDown);
  toldInAll();
  // The window manager holds back what follows a click until it has moved the focus, which is how
  // the test knows that it is ready for the next one.
  for (int round = 1; round <= 10; ++round) {
    client().movePointer(850, 550);
    client().clickButton(1);
    ASSERT_TRUE(runUntil([&] { return window.clicks() == round && window.isActiveWindow(); }));
    client().movePointer(300, 200);
    client().clickButton(1);
    ASSERT_TRUE(runUntil([&] { return told_ >= round && !window.isActiveWindow(); }));
  }
  EXPECT_EQ(toldInAll(), 10);
}

TEST_F(X11InputTest, InputCountsAgainWhenTheWindowIsGone) {
  {
    QWidget window;
    show(window);
    watch(kPresses);
    client().movePointer(850, 550);
    EXPECT_EQ(toldInAll(), 0);
  }
  toldInAll();
  client().clickButton(9);
  EXPECT_EQ(toldInAll(), 1);
  client().pressKey();
  EXPECT_EQ(toldInAll(), 1);
}

TEST_F(X11InputTest, KnowsAWindowThatWasThereBefore) {
  QWidget window;
  show(window);
  client().movePointer(850, 550);
  runFor(milliseconds(100));
  X11Input input(X11Connection::open());
  const Token monitor = input.addGlobalMonitor(kPresses, [this] { told_ += 1; });
  client().clickButton(1);
  client().pressKey();
  EXPECT_EQ(toldInAll(), 0);
}

TEST_F(X11InputTest, AnOpenMenuTakesAllInput) {
  QWidget window;
  show(window);
  QMenu menu;
  menu.addAction(QStringLiteral("One"));
  menu.addAction(QStringLiteral("Two"));
  watch(kPresses);
  menu.popup(QPoint(850, 520));
  EXPECT_TRUE(runUntil([&] { return menu.isVisible(); }));
  runFor(milliseconds(200));
  client().movePointer(300, 200);
  client().pressKey();
  client().clickButton(1);
  EXPECT_EQ(toldInAll(), 0);
  EXPECT_FALSE(menu.isVisible());
  client().clickButton(1);
  EXPECT_EQ(toldInAll(), 1);
}

TEST_F(X11InputTest, MovementsThatCameTogetherAreToldOnce) {
  watch(MouseMoved);
  toldInAll();
  for (std::int16_t x = 1; x <= 200; ++x) client().movePointer(x, 100);
  // Lets all events arrive before the loop runs.
  EXPECT_EQ(client().geometry(client().root()).width, 1440);
  const int told = toldInAll();
  EXPECT_GE(told, 1);
  EXPECT_LT(told, 50);
}

TEST_F(X11InputTest, WithoutAServerThereIsNothingToTell) {
  X11Input input(nullptr);
  EXPECT_FALSE(input.addGlobalMonitor(kPresses, [] {}));
  EXPECT_EQ(input.mouseLocation(), Point{});
}

}  // namespace
}  // namespace vembrix
