#include "platform/linux/menubar/VembrixSpaceRowViewTest.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <chrono>

#include "menubar/SpaceRow.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"
#include "platform/linux/support/DropdownUser.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Under the pointer

TEST_F(VembrixSpaceRowViewTest, ThePointerBringsTheButtonAndATintAndTakesThemWithIt) {
  VembrixSpaceRowView& row = open();
  const QPoint ground(row.width() / 2 + 40, 2);
  const QColor idle = pictureOf(row, Qt::white).pixelColor(ground);
  EXPECT_FALSE(row.renameButton().isVisible());
  user_.pointAt(row);
  EXPECT_TRUE(row.renameButton().isVisible());
  EXPECT_FALSE(areAlike(pictureOf(row, Qt::white).pixelColor(ground), idle));
  user_.pointAt(user_.row(1));
  EXPECT_FALSE(row.renameButton().isVisible());
  EXPECT_TRUE(user_.row(1).renameButton().isVisible());
  EXPECT_EQ(pictureOf(row, Qt::white).pixelColor(ground), idle);
}

TEST_F(VembrixSpaceRowViewTest, TheButtonIsBackUnderAPointerThatRestsWhenEditingEnds) {
  VembrixSpaceRowView& row = edit();
  user_.key(Qt::Key_Return);
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(runUntil([&] { return row.renameButton().isVisible(); }));
}

TEST_F(VembrixSpaceRowViewTest, NoButtonComesBackWhereThePointerHasLeftDuringEditing) {
  VembrixSpaceRowView& row = edit();
  user_.pointAt(user_.row(1));
  user_.key(Qt::Key_Return);
  runFor(std::chrono::milliseconds(100));
  EXPECT_FALSE(row.renameButton().isVisible());
}

TEST_F(VembrixSpaceRowViewTest, ClosingTheMenuTakesTheTintAway) {
  VembrixSpaceRowView& row = open();
  user_.pointAt(row);
  user_.key(Qt::Key_Escape);
  EXPECT_FALSE(row.state().background);
  EXPECT_FALSE(row.state().showsRenameButton);
}

// Clicks

TEST_F(VembrixSpaceRowViewTest, AClickOnTheDotClosesTheMenuAndSwitches) {
  user_.click(open(), DropdownUser::kDot);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("to Mail"));
}

TEST_F(VembrixSpaceRowViewTest, AClickOnTheNameClosesTheMenuAndSwitches) {
  open();
  user_.click(user_.row(1));
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("to Web"));
}

TEST_F(VembrixSpaceRowViewTest, AClickOnThePencilDoesNotSwitch) {
  edit();
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, APressThatIsReleasedElsewhereDoesNothing) {
  VembrixSpaceRowView& row = open();
  user_.press(row);
  user_.release(user_.row(1));
  user_.press(row);
  user_.release(QPoint(-50, 12));
  user_.press(row);
  user_.release(user_.widget().actionGeometry(user_.widget().actions().back()).center());
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, APencilThatIsReleasedElsewhereDoesNothing) {
  VembrixSpaceRowView& row = open();
  user_.pointAt(row);
  user_.press(row, row.renameButton().geometry().center());
  user_.release(row);
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, ClicksOnARowThatIsEditedDoNotSwitch) {
  VembrixSpaceRowView& row = edit();
  user_.click(row, DropdownUser::kDot);
  user_.click(row, row.editField().geometry().center());
  EXPECT_TRUE(user_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_THAT(events(), IsEmpty());
}

// Accessibility

TEST_F(VembrixSpaceRowViewTest, TellsItsNameAndWhatItsDotMeans) {
  Desktop active = desktopOf("Mail & Web");
  active.isActive = true;
  Desktop warm = desktopOf("🛠");
  warm.heatGlow = kBlue;
  open({active, warm, desktopOf("Code")});
  EXPECT_EQ(toldOf(user_.row(0)).name, "Mail & Web");
  EXPECT_EQ(toldOf(user_.row(0)).description, "current");
  EXPECT_EQ(toldOf(user_.row(1)).name, "🛠");
  EXPECT_EQ(toldOf(user_.row(1)).description, "recently used");
  EXPECT_EQ(toldOf(user_.row(2)).description, "");
}

TEST_F(VembrixSpaceRowViewTest, TheMenuLeadsToItsNameAndWhatItsDotMeans) {
  Desktop active = desktopOf("Mail");
  active.isActive = true;
  open({active, desktopOf("Code")});
  QAccessibleInterface* menu = QAccessible::queryAccessibleInterface(&user_.widget());
  EXPECT_EQ(menu->child(0)->text(QAccessible::Name), "Mail");
  EXPECT_EQ(menu->child(0)->text(QAccessible::Description), "current");
  EXPECT_TRUE(menu->child(0)->state().checked);
  EXPECT_FALSE(menu->child(1)->state().checked);
  EXPECT_EQ(menu->child(1)->text(QAccessible::Name), "Code");
  user_.clickPencil(user_.row(1));
  user_.type("Play");
  user_.key(Qt::Key_Return);
  EXPECT_EQ(menu->child(1)->text(QAccessible::Name), "Play");
}

TEST_F(VembrixSpaceRowViewTest, TheButtonTellsWhatItDoes) {
  VembrixSpaceRowView& row = open();
  user_.pointAt(row);
  EXPECT_EQ(toldOf(row.renameButton()).name, "Rename");
  EXPECT_EQ(row.renameButton().toolTip(), "Rename");
  QAccessibleInterface* button = QAccessible::queryAccessibleInterface(&row.renameButton());
  EXPECT_EQ(button->role(), QAccessible::Button);
  button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(runUntil([&] { return row.state().isEditing; }));
}

TEST_F(VembrixSpaceRowViewTest, TellsItsNewNameAfterARename) {
  VembrixSpaceRowView& row = edit();
  user_.type("Work");
  user_.key(Qt::Key_Return);
  EXPECT_EQ(toldOf(row).name, "Work");
}

}  // namespace
}  // namespace vembrix
