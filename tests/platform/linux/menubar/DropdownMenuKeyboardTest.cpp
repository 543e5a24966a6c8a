#include <gmock/gmock.h>

#include <QTimer>
#include <utility>
#include <vector>

#include "platform/Application.h"
#include "platform/DropdownMenu.h"
#include "platform/linux/menubar/DropdownMenuTest.h"
#include "platform/linux/support/DropdownUser.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(DropdownMenuTest, ArrowsAndReturnChooseARow) {
  user_.open(itemsOf({"Mail", "Web", "Code"}));
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) user_.key(key);
  EXPECT_TRUE(user_.row(1).state().background);
  EXPECT_FALSE(user_.row(2).state().background);
  user_.key(Qt::Key_Return);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Web, closed"));
}

TEST_F(DropdownMenuTest, TheArrowsGoOnFromThePointer) {
  user_.open(itemsOf({"Mail", "Web", "Code"}));
  user_.pointAt(user_.row(1));
  user_.key(Qt::Key_Down);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("Code, closed"));
}

TEST_F(DropdownMenuTest, ADigitChoosesTheRowOfThatNumber) {
  user_.open(itemsOf({"Mail", "Web", "Code"}));
  user_.key(Qt::Key_4);
  EXPECT_TRUE(user_.isOpen()) << "there are three";
  user_.key(Qt::Key_0);
  EXPECT_TRUE(user_.isOpen()) << "rows are counted from 1";
  user_.type("2");
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Web, closed"));
}

TEST_F(DropdownMenuTest, TheFirstLettersOfANameSelectItsRow) {
  user_.open(itemsOf({"Mail", "music", "Müll", "3D", "Über uns"}));
  user_.type("MUS");
  EXPECT_TRUE(user_.row(1).state().background);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("music, closed"));
}

TEST_F(DropdownMenuTest, TheSameLetterAgainGoesOnToTheNextSuchRow) {
  user_.open(itemsOf({"Mail", "Web", "Music"}));
  user_.type("mm");
  EXPECT_TRUE(user_.row(2).state().background);
  user_.type("m");
  EXPECT_TRUE(user_.row(0).state().background);
}

TEST_F(DropdownMenuTest, ADigitWithinANameThatIsTypedBelongsToIt) {
  user_.open(itemsOf({"Mail", "a1", "a2"}));
  user_.type("a2");
  EXPECT_TRUE(user_.isOpen());
  EXPECT_TRUE(user_.row(2).state().background);
}

TEST_F(DropdownMenuTest, LettersThatBeginNoNameSelectNothing) {
  user_.open(itemsOf({"Mail", "Web"}));
  user_.type("x");
  EXPECT_FALSE(user_.row(0).state().background);
  EXPECT_FALSE(user_.row(1).state().background);
  EXPECT_TRUE(user_.isOpen());
  user_.open(itemsOf({}));
  user_.type("x1");
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, LettersAndDigitsOfANameThatIsEditedChooseNothing) {
  user_.open(itemsOf({"Mail", "Web"}));
  user_.clickPencil(user_.row(0));
  user_.type("2w");
  EXPECT_TRUE(user_.isOpen());
  EXPECT_EQ(user_.row(0).editedText(), "2w");
  EXPECT_FALSE(user_.row(1).state().background);
}

TEST_F(DropdownMenuTest, KeyEquivalentsRunTheirCommandsAfterTheMenuHasClosed) {
  user_.open(itemsOf({"Mail"}));
  user_.key(Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Preferences, closed"));
  user_.open();
  user_.key(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Preferences, closed", "Quit, closed"));
}

TEST_F(DropdownMenuTest, AKeyEquivalentNeedsItsModifierAndNoOther) {
  user_.open(itemsOf({"Mail"}));
  user_.key(Qt::Key_Q);
  user_.key(Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, NoLetterOfANameIsAKey) {
  user_.open(itemsOf({"Mail &Web", "R&D"}));
  user_.key(Qt::Key_W);
  user_.key(Qt::Key_D);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, TheStandardCommandEndsTheProgram) {
  std::vector<MenuItem> items;
  items.emplace_back(MenuCommand{.title = "Quit",
                                 .font = {},
                                 .keyEquivalent = "q",
                                 .action = MenuCommand::Standard::Terminate});
  user_.open(std::move(items));
  QTimer::singleShot(0, [&] { user_.key(Qt::Key_Q, Qt::ControlModifier); });
  EXPECT_EQ(Application::shared().run(), 0);
}

}  // namespace
}  // namespace vembrix
