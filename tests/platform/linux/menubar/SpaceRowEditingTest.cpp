#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>

#include "platform/linux/menubar/VembrixSpaceRowView.h"
#include "platform/linux/menubar/VembrixSpaceRowViewTest.h"
#include "platform/linux/support/DropdownUser.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(VembrixSpaceRowViewTest, ThePencilBeginsEditingWithTheWholeNameSelected) {
  VembrixSpaceRowView& row = edit();
  EXPECT_TRUE(row.editField().isVisible());
  EXPECT_FALSE(row.renameButton().isVisible());
  EXPECT_EQ(row.editedText(), "Mail");
  EXPECT_EQ(row.editField().selectedText(), "Mail");
  EXPECT_EQ(user_.widget().focusWidget(), &row.editField());
}

TEST_F(VembrixSpaceRowViewTest, ReturnTakesWhatWasTyped) {
  VembrixSpaceRowView& row = edit();
  user_.type("Work 2");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("Work 2"));
  EXPECT_EQ(row.state().label, "Work 2");
  EXPECT_FALSE(row.editField().isVisible());
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, EnterOnTheKeypadTakesWhatWasTyped) {
  VembrixSpaceRowView& row = edit();
  user_.type("Play");
  user_.key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_THAT(names_, ElementsAre("Play"));
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(user_.isOpen());
}

TEST_F(VembrixSpaceRowViewTest, EscapeLeavesTheNameAndThenTheMenu) {
  VembrixSpaceRowView& row = edit();
  user_.type("Play");
  user_.key(Qt::Key_Escape);
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_TRUE(user_.isOpen());
  user_.key(Qt::Key_Escape);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, TheCaretMovesAndSelectsAsInAnyField) {
  VembrixSpaceRowView& row = edit();
  user_.key(Qt::Key_Home);
  user_.type("E");
  user_.key(Qt::Key_End);
  user_.key(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(row.editField().selectedText(), "l");
  user_.type("n");
  user_.key(Qt::Key_Left);
  user_.key(Qt::Key_Backspace);
  EXPECT_EQ(row.editedText(), "EMan");
  user_.key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(row.editField().selectedText(), "EMan");
}

TEST_F(VembrixSpaceRowViewTest, TakesWhatIsPasted) {
  VembrixSpaceRowView& row = edit();
  QGuiApplication::clipboard()->setText(QStringLiteral("Büro"));
  user_.key(Qt::Key_V, Qt::ControlModifier);
  user_.key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(row.editedText(), "BüroBüro");
}

TEST_F(VembrixSpaceRowViewTest, TakesWhatAnInputMethodCommits) {
  VembrixSpaceRowView& row = edit();
  QInputMethodEvent composing(QStringLiteral("にほ"), {});
  QCoreApplication::sendEvent(&row.editField(), &composing);
  EXPECT_EQ(row.editedText(), "");
  QInputMethodEvent committing;
  committing.setCommitString(QStringLiteral("🛠"));
  QCoreApplication::sendEvent(&row.editField(), &committing);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("🛠"));
}

TEST_F(VembrixSpaceRowViewTest, NoKeyMovesTheMenusHighlightWhileANameIsEdited) {
  VembrixSpaceRowView& row = edit();
  const QAction* const highlighted = user_.widget().activeAction();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Tab,
                            Qt::Key_Backtab, Qt::Key_Down}) {
    user_.key(key);
    EXPECT_EQ(user_.widget().activeAction(), highlighted) << key;
    EXPECT_EQ(user_.widget().focusWidget(), &row.editField()) << key;
  }
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_EQ(row.editedText(), "Mail");
  EXPECT_FALSE(user_.row(1).state().background);
}

TEST_F(VembrixSpaceRowViewTest, NoKeyIsACommandWhileANameIsEdited) {
  VembrixSpaceRowView& row = edit();
  user_.key(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, ThePointerOnOtherRowsLeavesTheKeyboardToTheField) {
  VembrixSpaceRowView& row = edit();
  user_.pointAt(user_.row(2));
  user_.type("Play");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("Play"));
  EXPECT_EQ(row.state().label, "Play");
}

TEST_F(VembrixSpaceRowViewTest, OneNameIsEditedAtATime) {
  VembrixSpaceRowView& first = edit();
  user_.type("Play");
  user_.clickPencil(user_.row(1));
  EXPECT_FALSE(first.state().isEditing);
  EXPECT_EQ(first.state().label, "Mail");
  EXPECT_TRUE(user_.row(1).state().isEditing);
  EXPECT_THAT(names_, IsEmpty());
  user_.type("News");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("News"));
}

TEST_F(VembrixSpaceRowViewTest, ClosingTheMenuEndsTheEditingWithoutAName) {
  VembrixSpaceRowView& row = edit();
  user_.type("Play");
  user_.widget().close();
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_THAT(names_, IsEmpty());
}

}  // namespace
}  // namespace vembrix
