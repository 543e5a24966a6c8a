#include "platform/macos/menubar/NameEditing.h"

#include <gmock/gmock.h>

#include <cstddef>

#include "platform/macos/support/RowInMenu.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned short kReturn = 36;
constexpr unsigned short kLetterA = 0;
constexpr unsigned short kEscape = 53;
constexpr unsigned short kKeypadEnter = 76;

class NameEditingTest : public testing::Test {
 protected:
  using Selection = NameField::Selection;
  using Command = NameEditing::Command;

  /// Edits in the open panel, because the window refuses every request.
  void editInPanel() {
    menu_.refuse(1000);
    menu_.clickPencil();
    menu_.lookOften(NameEditing::requestLimit);
  }

  RowInMenu menu_;
  NameEditing& editing_ = menu_.editing();
};

// The keyboard.

TEST_F(NameEditingTest, AsksAtOnceAndNoMoreWhereTheWindowGivesTheKeyboard) {
  menu_.clickPencil();
  menu_.lookOften(100);
  EXPECT_THAT(menu_.requests(), ElementsAre(Selection::All));
  EXPECT_EQ(menu_.panels(), 0);
}

TEST_F(NameEditingTest, AsksAgainUntilTheWindowGivesTheKeyboard) {
  menu_.refuse(3);
  menu_.clickPencil();
  menu_.lookOften(100);
  EXPECT_EQ(menu_.requests().size(), 4U);
  EXPECT_THAT(menu_.requests(), testing::Each(Selection::All));
  EXPECT_EQ(menu_.panels(), 0);
}

TEST_F(NameEditingTest, TheLastRequestCounts) {
  menu_.refuse(NameEditing::requestLimit - 1);
  menu_.clickPencil();
  menu_.lookOften(100);
  EXPECT_EQ(menu_.requests().size(), std::size_t{NameEditing::requestLimit});
  EXPECT_EQ(menu_.panels(), 0);
}

TEST_F(NameEditingTest, ThePanelTakesOverAfterTheLastRefusal) {
  menu_.refuse(1000);
  menu_.clickPencil();
  menu_.lookOften(NameEditing::requestLimit - 1);
  EXPECT_FALSE(menu_.panelIsShown());
  menu_.lookOften(100);
  EXPECT_TRUE(menu_.panelIsShown());
  EXPECT_EQ(menu_.panels(), 1) << "once";
  EXPECT_EQ(menu_.requests().size(), std::size_t{NameEditing::requestLimit});
}

TEST_F(NameEditingTest, AKeyboardThatWasTakenBackIsAskedForWithTheCaretWhereItWas) {
  menu_.clickPencil();
  menu_.lookOften(1);
  menu_.type("Post");
  menu_.takeKeyboardBack();
  menu_.lookOften(1);
  menu_.type("box");
  EXPECT_THAT(menu_.requests(), ElementsAre(Selection::All, Selection::AsItWas));
  EXPECT_EQ(menu_.editedText(), "Postbox");
}

TEST_F(NameEditingTest, AMenuThatTakesTheKeyboardBackEachTimeGetsThePanelInTheEnd) {
  menu_.clickPencil();
  for (int turn = 0; turn < 100; ++turn) {
    menu_.lookOften(1);
    menu_.takeKeyboardBack();
  }
  menu_.lookOften(2);
  EXPECT_TRUE(menu_.panelIsShown());
  EXPECT_EQ(menu_.requests().size(), std::size_t{NameEditing::requestLimit});
}

TEST_F(NameEditingTest, AWindowThatIsGoneForATimeIsNotAsked) {
  menu_.refuse(1);
  menu_.clickPencil();
  menu_.setHasWindow(false);
  menu_.lookOften(3);
  EXPECT_EQ(menu_.requests().size(), 1U);
  menu_.setHasWindow(true);
  menu_.lookOften(100);
  EXPECT_EQ(menu_.requests().size(), 2U);
  EXPECT_EQ(menu_.panels(), 0);
}

TEST_F(NameEditingTest, ThePanelTakesOverWhereTheWindowIsGoneForGood) {
  menu_.refuse(1);
  menu_.clickPencil();
  menu_.setHasWindow(false);
  menu_.lookOften(100);
  EXPECT_EQ(menu_.requests().size(), 1U);
  EXPECT_TRUE(menu_.panelIsShown());
}

TEST_F(NameEditingTest, ThePanelGoesWhenTheUserClicksIntoTheFieldBelowIt) {
  editInPanel();
  ASSERT_TRUE(menu_.panelIsShown());
  menu_.clickIntoField();
  menu_.lookOften(100);
  EXPECT_FALSE(menu_.panelIsShown());
  EXPECT_EQ(menu_.panels(), 1);
  EXPECT_TRUE(editing_.isEditing());
}

TEST_F(NameEditingTest, EachEditingBeginsAnew) {
  editInPanel();
  editing_.perform(Command::Cancel);
  menu_.refuse(0);
  menu_.clickPencil();
  menu_.lookOften(100);
  EXPECT_EQ(menu_.requests().size(), std::size_t{NameEditing::requestLimit + 1});
  EXPECT_EQ(menu_.requests().back(), Selection::All);
  EXPECT_EQ(menu_.panels(), 1);
}

TEST_F(NameEditingTest, NothingIsAskedForWhileNothingIsEdited) {
  menu_.lookOften(100);
  EXPECT_THAT(menu_.requests(), IsEmpty());
  EXPECT_EQ(menu_.panels(), 0);
}

// The end of an editing, through each of the three routes of keys: a monitor, the field's own
// commands, and the panel.

TEST_F(NameEditingTest, ReturnAndEnterThatAMonitorSeesTakeTheName) {
  for (const unsigned short key : {kReturn, kKeypadEnter}) {
    menu_.clickPencil();
    menu_.type("Post");
    EXPECT_EQ(editing_.keyDown(key), KeyHandling::Swallowed);
    EXPECT_FALSE(menu_.state().isEditing);
  }
  EXPECT_THAT(menu_.names(), ElementsAre("Post", "Post"));
}

TEST_F(NameEditingTest, EscapeThatAMonitorSeesDropsTheName) {
  menu_.clickPencil();
  menu_.type("Post");
  EXPECT_EQ(editing_.keyDown(kEscape), KeyHandling::Swallowed);
  EXPECT_FALSE(menu_.state().isEditing);
  EXPECT_EQ(menu_.state().label, "Mail");
  EXPECT_THAT(menu_.names(), IsEmpty());
}

TEST_F(NameEditingTest, OtherKeysGoToTheText) {
  menu_.clickPencil();
  EXPECT_EQ(editing_.keyDown(kLetterA), KeyHandling::Interpreted);
  EXPECT_TRUE(menu_.state().isEditing);
}

TEST_F(NameEditingTest, TheFieldsCommandsDoAsTheKeysDo) {
  menu_.clickPencil();
  menu_.type("Post");
  EXPECT_TRUE(editing_.perform(Command::InsertNewline));
  EXPECT_EQ(menu_.state().label, "Post");
  menu_.clickPencil();
  menu_.type("Letters");
  EXPECT_TRUE(editing_.perform(Command::Cancel));
  EXPECT_EQ(menu_.state().label, "Post");
  EXPECT_THAT(menu_.names(), ElementsAre("Post"));
}

TEST_F(NameEditingTest, ReturnInThePanelTakesItsTextAndThePanelGoes) {
  editInPanel();
  menu_.type("Post");
  EXPECT_EQ(editing_.keyDown(kReturn), KeyHandling::Swallowed);
  EXPECT_THAT(menu_.names(), ElementsAre("Post"));
  EXPECT_FALSE(menu_.panelIsShown());
}

TEST_F(NameEditingTest, EscapeInThePanelDropsTheNameAndThePanelGoes) {
  editInPanel();
  menu_.type("Post");
  EXPECT_TRUE(editing_.perform(Command::Cancel));
  EXPECT_THAT(menu_.names(), IsEmpty());
  EXPECT_FALSE(menu_.panelIsShown());
}

TEST_F(NameEditingTest, KeysAndCommandsOutsideAnEditingAreNotTheRows) {
  EXPECT_EQ(editing_.keyDown(kReturn), KeyHandling::Passed);
  EXPECT_FALSE(editing_.perform(Command::InsertNewline));
  EXPECT_FALSE(editing_.perform(Command::Cancel));
  EXPECT_EQ(menu_.switches(), 0);
}

// Input methods and dead keys.

TEST_F(NameEditingTest, WhileTextIsBeingComposedReturnAndEscapeAreTheInputMethods) {
  menu_.clickPencil();
  menu_.setMarkedText(true);
  for (const unsigned short key : {kReturn, kKeypadEnter, kEscape}) {
    EXPECT_EQ(editing_.keyDown(key), KeyHandling::Interpreted);
  }
  EXPECT_FALSE(editing_.perform(Command::InsertNewline));
  EXPECT_FALSE(editing_.perform(Command::Cancel));
  EXPECT_TRUE(menu_.state().isEditing);
  menu_.setMarkedText(false);
  menu_.type("日本");
  EXPECT_EQ(editing_.keyDown(kReturn), KeyHandling::Swallowed);
  EXPECT_THAT(menu_.names(), ElementsAre("日本"));
}

TEST_F(NameEditingTest, AnInputMethodComposesInThePanelToo) {
  editInPanel();
  menu_.setMarkedText(true);
  EXPECT_EQ(editing_.keyDown(kEscape), KeyHandling::Interpreted);
  EXPECT_TRUE(menu_.panelIsShown());
}

// Actions of the menu meanwhile.

TEST_F(NameEditingTest, AClickOutsideClosesTheMenuAndNamesNothing) {
  menu_.clickPencil();
  menu_.type("Post");
  menu_.close();
  menu_.lookOften(100);
  EXPECT_THAT(menu_.names(), IsEmpty());
  EXPECT_EQ(menu_.requests().size(), 1U) << "nothing is asked of a menu that is closed";
  EXPECT_EQ(editing_.keyDown(kReturn), KeyHandling::Passed);
}

TEST_F(NameEditingTest, ThePanelClosesWithTheMenu) {
  editInPanel();
  menu_.close();
  EXPECT_FALSE(menu_.panelIsShown());
  menu_.lookOften(100);
  EXPECT_EQ(menu_.panels(), 1);
}

TEST_F(NameEditingTest, AMenuThatClosesBeforeThePanelCameGetsNone) {
  menu_.refuse(1000);
  menu_.clickPencil();
  menu_.lookOften(NameEditing::requestLimit - 1);
  menu_.close();
  menu_.lookOften(100);
  EXPECT_EQ(menu_.panels(), 0);
}

TEST_F(NameEditingTest, AnotherRowThatIsEditedEndsTheEditing) {
  editInPanel();
  // The view of the other row does the same.
  menu_.row().cancel();
  EXPECT_FALSE(menu_.panelIsShown());
  EXPECT_FALSE(editing_.isEditing());
  EXPECT_THAT(menu_.names(), IsEmpty());
}

TEST_F(NameEditingTest, ARowThatGoesInTheMiddleIsToldNothing) {
  editInPanel();
  editing_.invalidate();
  EXPECT_FALSE(menu_.panelIsShown());
  const std::size_t requests = menu_.requests().size();
  editing_.begin();
  menu_.lookOften(100);
  EXPECT_EQ(menu_.requests().size(), requests);
  EXPECT_EQ(editing_.keyDown(kReturn), KeyHandling::Passed);
  EXPECT_FALSE(editing_.perform(Command::InsertNewline));
  EXPECT_THAT(menu_.names(), IsEmpty());
}

// The caret.

TEST(NameCaretTest, ARowDrawsItWhereAppKitDoesNot) {
  EXPECT_FALSE(drawsOwnCaret(MenuKeys::Monitored, /*windowIsKey=*/true));
  EXPECT_TRUE(drawsOwnCaret(MenuKeys::Monitored, /*windowIsKey=*/false));
  EXPECT_TRUE(drawsOwnCaret(MenuKeys::ToFirstResponder, /*windowIsKey=*/false));
  EXPECT_TRUE(drawsOwnCaret(MenuKeys::ToFirstResponder, /*windowIsKey=*/true))
      << "AppKit hides its own while a menu is open";
}

}  // namespace
}  // namespace vembrix
