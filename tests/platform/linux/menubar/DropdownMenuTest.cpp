#include "platform/linux/menubar/DropdownMenuTest.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <QtTest/QTest>
#include <utility>
#include <vector>

#include "platform/Application.h"
#include "platform/DropdownMenu.h"
#include "platform/linux/support/DropdownUser.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

// Opening

TEST_F(DropdownMenuTest, StaysOpenWhenTheProgramHasLostTheFocus) {
  menu_->setItems(manyItems(3));
  user_.open();
  QEvent deactivation(QEvent::ApplicationDeactivate);
  QCoreApplication::sendEvent(qApp, &deactivation);
  EXPECT_TRUE(user_.isOpen());
}

TEST_F(DropdownMenuTest, AsksForItsItemsEachTimeItOpens) {
  int updates = 0;
  menu_->setNeedsUpdateHandler([&] {
    updates += 1;
    menu_->setItems(manyItems(updates));
  });
  user_.open();
  EXPECT_EQ(widget().actions().size(), 1 + 4);
  user_.key(Qt::Key_Escape);
  EXPECT_EQ(updates, 1);
  user_.open();
  EXPECT_EQ(widget().actions().size(), 2 + 4);
}

TEST_F(DropdownMenuTest, ASelectedCommandHasTheHighlightThatItIsGivenElseTheSystems) {
  std::vector<MenuItem> items;
  items.push_back(commandOf("System", ""));
  items.push_back(commandOf("Given", ""));
  std::get<MenuCommand>(items.back()).highlight = Srgb{1, 0, 0, 0.5};
  user_.open(std::move(items));
  const auto selected = [this](int index) {
    QAction* action = widget().actions()[index];
    widget().setActiveAction(action);
    // A pixel to the left of the title.
    const QPoint place = widget().actionGeometry(action).topLeft() + QPoint(9, 10);
    return pictureOf(widget(), Qt::white).pixelColor(place);
  };
  EXPECT_EQ(selected(0), widget().palette().color(QPalette::Highlight));
  const QColor given = selected(1);
  EXPECT_NEAR(given.red(), (255 + ground().red()) / 2.0, 1);
  EXPECT_NEAR(given.blue(), ground().blue() / 2.0, 1);
}

TEST_F(DropdownMenuTest, DoesNotOpenWithoutItems) {
  user_.open({});
  EXPECT_FALSE(user_.isOpen());
}

// The pointer

TEST_F(DropdownMenuTest, AClickRunsACommandAfterTheMenuHasClosed) {
  user_.open(itemsOf({"Mail"}));
  user_.click(*widget().actions().back());
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Quit, closed"));
}

TEST_F(DropdownMenuTest, AClickOnASeparatorDoesNothing) {
  user_.open(itemsOf({"Mail"}));
  user_.click(*widget().actions().at(1));
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, ACommandMayOpenTheMenuWithOtherItems) {
  std::vector<MenuItem> items;
  items.emplace_back(
      MenuCommand{.title = "Again", .font = {}, .keyEquivalent = "", .action = [this] {
                    user_.open(itemsOf({"Mail"}));
                    tell("Again");
                  }});
  user_.open(std::move(items));
  user_.key(Qt::Key_Down);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("Again, open"));
}

// What is left behind

struct Living {
  explicit Living(const QMenu& menu)
      : widgets(QApplication::allWidgets().size()), objects(menu.findChildren<QObject*>().size()) {}
  bool operator==(const Living&) const = default;

  qsizetype widgets;
  qsizetype objects;
};

TEST_F(DropdownMenuTest, NewItemsLeaveNothingOfThoseBefore) {
  menu_->setItems(manyItems(16));
  const Living once(widget());
  for (int time = 0; time < 1000; ++time) menu_->setItems(manyItems(16));
  EXPECT_EQ(Living(widget()), once);
  menu_->setItems({});
  EXPECT_THAT(widget().actions(), IsEmpty());
}

TEST_F(DropdownMenuTest, AThousandOpeningsLeaveOneSetOfWidgets) {
  menu_->setNeedsUpdateHandler([this] { menu_->setItems(manyItems(4)); });
  user_.open();
  user_.key(Qt::Key_Escape);
  const Living once(widget());
  for (int time = 0; time < 1000; ++time) {
    user_.open();
    widget().close();
  }
  EXPECT_EQ(Living(widget()), once);
}

TEST_F(DropdownMenuTest, NewItemsLeaveNothingOfARowThatWasEdited) {
  user_.open(manyItems(4));
  user_.key(Qt::Key_Escape);
  const Living once(widget());
  for (int time = 0; time < 20; ++time) {
    user_.open();
    user_.clickPencil(user_.row(2));
    ASSERT_TRUE(user_.row(2).state().isEditing);
    user_.type("Play");
    widget().close();
    menu_->setItems(manyItems(4));
    EXPECT_EQ(Living(widget()), once);
  }
}

TEST_F(DropdownMenuTest, GoesWhileARowIsEdited) {
  const qsizetype before = QApplication::allWidgets().size();
  auto menu = DropdownMenu::create();
  menu->setItems(manyItems(4));
  auto& native = static_cast<NativeDropdownMenu&>(*menu);
  native.open(QRect(40, 24, 1, 1), NativeDropdownMenu::OpenedBy::Click);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&native.widget()));
  native.widget().findChild<QAbstractButton*>()->click();
  ASSERT_TRUE(native.widget().findChild<QLineEdit*>()->isVisible());
  menu.reset();
  EXPECT_EQ(QApplication::allWidgets().size(), before);
}

}  // namespace
}  // namespace vembrix
