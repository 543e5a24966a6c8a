#include "platform/linux/menubar/StatusItemTest.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "platform/Application.h"
#include "platform/DropdownMenu.h"
#include "platform/StatusItem.h"
#include "platform/UserDefaults.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"

namespace vembrix {
namespace {

// Its window

TEST_F(StatusItemTest, HasAButton) {
  EXPECT_TRUE(item_->hasButton());
}

TEST_F(StatusItemTest, SitsAtTheTopRightOfTheScreen) {
  const QRect screen = QApplication::primaryScreen()->geometry();
  for (const char* name : {" A ", " A much longer name "}) {
    show(filled(name));
    EXPECT_TRUE(strip().isVisible());
    EXPECT_EQ(strip().geometry().topRight(), screen.topRight());
  }
}

TEST_F(StatusItemTest, ItsWindowIsNamedAfterItsTitle) {
  const auto name = [&] { return strip().windowHandle()->title().toStdString(); };
  show(filled(" Büro [*] \xF0\x9F\x8F\xA0 "));
  EXPECT_EQ(name(), "Büro [*] \xF0\x9F\x8F\xA0");
  show(plain("Desktops"));
  EXPECT_EQ(name(), "Desktops");
  show(icon());
  EXPECT_EQ(name(), "Vembrix");
}

TEST_F(StatusItemTest, GoesWithItsObject) {
  show(filled(" A "));
  item_.reset();
  EXPECT_EQ(windowOfRole("status-item"), nullptr);
}

TEST_F(StatusItemTest, EqualContentChangesNothing) {
  show(filled(" A "));
  const QImage before = picture();
  const QRect place = strip().geometry();
  show(filled(" A "));
  EXPECT_EQ(picture(), before);
  EXPECT_EQ(strip().geometry(), place);
}

TEST_F(StatusItemTest, AnotherColorIsSeenAtTheSamePlace) {
  show(filled(" A "));
  const QImage before = picture();
  const QRect place = strip().geometry();
  show(filled(" A ", {0.5, 0.5, 1}));
  EXPECT_NE(picture(), before);
  EXPECT_EQ(strip().geometry(), place);
}

// Its menu

TEST_F(StatusItemTest, OwnsItsMenu) {
  EXPECT_EQ(item_->menu(), nullptr);
  auto menu = DropdownMenu::create();
  DropdownMenu* raw = menu.get();
  item_->setMenu(std::move(menu));
  EXPECT_EQ(item_->menu(), raw);
  EXPECT_NE(windowOfRole("menu"), nullptr);
  item_->setMenu(nullptr);
  EXPECT_EQ(item_->menu(), nullptr);
  EXPECT_EQ(windowOfRole("menu"), nullptr);
}

TEST_F(StatusItemTest, AClickOpensTheMenuBelow) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  click();
  EXPECT_TRUE(menu.isVisible());
  EXPECT_GE(menu.y(), strip().geometry().bottom());
  menu.close();
}

TEST_F(StatusItemTest, AClickWithATremblingHandIsAClick) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  const QRect place = strip().geometry();
  click({3, 2});
  EXPECT_TRUE(menu.isVisible());
  EXPECT_EQ(strip().geometry(), place);
  menu.close();
}

TEST_F(StatusItemTest, ADragOpensNothingAndIsRemembered) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  const QPoint start = strip().pos();
  drag({-300, 5});
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(strip().pos(), start - QPoint(300, 0));
  show(filled(" A longer name "));
  EXPECT_LT(strip().x(), start.x() - 300) << "it grows from the end that is nearer to its edge";
  item_ = StatusItem::create();
  show(filled(" A "));
  EXPECT_EQ(strip().pos(), start - QPoint(300, 0)) << "also the next time";
}

TEST_F(StatusItemTest, DraggedIntoTheCornerItIsWhereItWas) {
  show(filled(" A "));
  const QRect place = strip().geometry();
  drag({-300, 5});
  ASSERT_NE(strip().geometry(), place);
  drag({295, 8});
  EXPECT_EQ(strip().geometry(), place);
  EXPECT_TRUE(UserDefaults::standard().object("LinuxStatusItemPlaces").isNull());
}

TEST_F(StatusItemTest, TheMenuOpensAboveAnItemAtTheBottom) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  const QRect screen = QApplication::primaryScreen()->geometry();
  drag({-300, screen.height()});
  ASSERT_EQ(strip().geometry().bottom(), screen.bottom());
  click();
  EXPECT_LE(menu.geometry().bottom(), strip().geometry().top());
  menu.close();
}

// For assistive programs

TEST_F(StatusItemTest, IsAButtonThatIsNamedAndPressed) {
  show(filled(" Büro "));
  int clicks = 0;
  QObject::connect(&button(), &QAbstractButton::clicked, [&] { clicks += 1; });
  QAccessibleInterface* described = QAccessible::queryAccessibleInterface(&button());
  EXPECT_EQ(described->role(), QAccessible::Button);
  EXPECT_EQ(described->text(QAccessible::Name), "Büro");
  described->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicks, 1);
}

TEST_F(StatusItemTest, ItsOpenMenuBelongsToIt) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  QAction* entry = menu.addAction("Entry");
  QAccessibleInterface* described = QAccessible::queryAccessibleInterface(&button());
  EXPECT_EQ(described->childCount(), 0) << "closed";
  click();
  ASSERT_EQ(described->childCount(), 1);
  QAccessibleInterface* list = described->child(0);
  EXPECT_EQ(list->role(), QAccessible::PopupMenu);
  EXPECT_EQ(list->parent(), described);
  ASSERT_EQ(list->childCount(), 1);
  QAccessibleInterface* item = list->child(0);
  EXPECT_EQ(item->role(), QAccessible::MenuItem);
  EXPECT_EQ(item->text(QAccessible::Name), "Entry");
  EXPECT_EQ(item->parent(), list);
  int choices = 0;
  QObject::connect(entry, &QAction::triggered, [&] { choices += 1; });
  item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(choices, 1);
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(StatusItemTest, AClickWithoutAMenuOrAnEmptyOneShowsNothing) {
  show(filled(" A "));
  click();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  item_->setMenu(DropdownMenu::create());
  click();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

}  // namespace
}  // namespace vembrix
