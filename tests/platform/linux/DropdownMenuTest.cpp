#include "platform/DropdownMenu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QPalette>

#include "platform/Application.h"
#include "platform/linux/TestSession.h"
#include "platform/linux/menubar/NativeMenu.h"

namespace vembrix {
namespace {

class DropdownMenuTest : public testing::Test {
 protected:
  DropdownMenuTest() {
    TestSession::useNoScreen();
    menu_ = DropdownMenu::create();
  }

  QMenu& widget() { return static_cast<NativeMenu&>(*menu_).widget(); }
  QColor ground() { return widget().palette().color(QPalette::Window); }
  QColor text() { return widget().palette().color(QPalette::WindowText); }
  bool isDark() { return text().lightnessF() > ground().lightnessF(); }

  static void useWidgets(const QColor& ground, const QColor& text) {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    QApplication::setPalette(palette);
  }

  TestSession session_;
  std::unique_ptr<DropdownMenu> menu_;
};

TEST_F(DropdownMenuTest, IsKnownByItsRole) {
  EXPECT_EQ(widget().windowRole(), "menu");
}

TEST_F(DropdownMenuTest, TakesTheAppearanceThatItIsTold) {
  menu_->setAppearance(Appearance::Dark);
  EXPECT_TRUE(isDark());
  menu_->setAppearance(Appearance::Light);
  EXPECT_FALSE(isDark());
}

TEST_F(DropdownMenuTest, FollowsTheSystemWhereItIsToldNone) {
  EXPECT_FALSE(isDark());
  useWidgets(QColor(30, 30, 30), QColor(230, 230, 230));
  EXPECT_TRUE(runUntil([&] { return isDark(); }));
  menu_->setAppearance(Appearance::Light);
  EXPECT_FALSE(isDark());
  menu_->setAppearance(std::nullopt);
  EXPECT_TRUE(isDark());
  useWidgets(Qt::white, Qt::black);
  EXPECT_TRUE(runUntil([&] { return !isDark(); }));
}

TEST_F(DropdownMenuTest, AToldAppearanceDoesNotFollowTheSystem) {
  menu_->setAppearance(Appearance::Light);
  useWidgets(QColor(30, 30, 30), QColor(230, 230, 230));
  ASSERT_TRUE(
      runUntil([] { return Application::shared().effectiveAppearance() == Appearance::Dark; }));
  EXPECT_FALSE(isDark());
}

}  // namespace
}  // namespace vembrix
