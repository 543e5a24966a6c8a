#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "menubar/SpaceRowTest.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SpaceRowTest, ThePencilShowsTheFieldWithAllOfTheNameSelected) {
  const RecordingSpaceRowView& row = edit();
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_FALSE(row.state().showsRenameButton);
  EXPECT_EQ(row.editedText(), "Mail");
  EXPECT_TRUE(row.isAllSelected());
}

TEST_F(SpaceRowTest, TypingWorksWhileTheMenuStaysOpen) {
  RecordingSpaceRowView& row = edit();
  row.type("Wörk 🛠");
  EXPECT_EQ(row.editedText(), "Wörk 🛠");
  row.pressDelete();
  row.pressDelete();
  EXPECT_EQ(row.editedText(), "Wörk");
  EXPECT_EQ(row.press(RowKey::Other), KeyHandling::Interpreted);
  EXPECT_TRUE(menu_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
}

TEST_F(SpaceRowTest, ReturnShowsANameWithTheBlanksAroundItAndPassesItUnchanged) {
  RecordingSpaceRowView& row = edit();
  row.type("  Work 🛠 ");
  EXPECT_EQ(row.press(RowKey::Return), KeyHandling::Swallowed);
  EXPECT_EQ(row.state().label, "  Work 🛠 ");
  EXPECT_THAT(names_, ElementsAre("  Work 🛠 "));
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(menu_.isOpen());
}

TEST_F(SpaceRowTest, KeypadEnterCommitsToo) {
  RecordingSpaceRowView& row = edit();
  row.type("Work");
  EXPECT_EQ(row.press(RowKey::KeypadEnter), KeyHandling::Swallowed);
  EXPECT_EQ(row.state().label, "Work");
  EXPECT_THAT(names_, ElementsAre("Work"));
}

TEST_F(SpaceRowTest, ReturnWithOnlyBlanksShowsTheOldNameAndStillPassesTheBlanks) {
  RecordingSpaceRowView& row = edit();
  row.type(" \t　");
  row.press(RowKey::Return);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_THAT(names_, ElementsAre(" \t　"));
}

TEST_F(SpaceRowTest, ReturnInAnEmptyFieldPassesTheEmptyText) {
  RecordingSpaceRowView& row = edit();
  row.pressDelete();
  row.press(RowKey::Return);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_THAT(names_, ElementsAre(""));
}

TEST_F(SpaceRowTest, ReturnWithoutAChangePassesTheName) {
  RecordingSpaceRowView& row = edit();
  row.press(RowKey::Return);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_THAT(names_, ElementsAre("Mail"));
}

TEST_F(SpaceRowTest, EscapeRestoresTheLabelAndCallsNothing) {
  RecordingSpaceRowView& row = edit();
  row.type("Work");
  EXPECT_EQ(row.press(RowKey::Escape), KeyHandling::Swallowed);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_THAT(names_, IsEmpty());
  queue_.runPending();
  EXPECT_EQ(switches_, 0);
}

TEST_F(SpaceRowTest, OneEscapeCancelsTheNextClosesTheMenu) {
  edit();
  menu_.press(RowKey::Escape);
  EXPECT_TRUE(menu_.isOpen());
  menu_.press(RowKey::Escape);
  EXPECT_FALSE(menu_.isOpen());
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(SpaceRowTest, ReturnInTheFieldDoesNotChooseTheSelectedRow) {
  RecordingSpaceRowView& row = edit();
  menu_.highlight(0);
  row.type("Work");
  menu_.press(RowKey::Return);
  queue_.runPending();
  EXPECT_EQ(switches_, 0);
  EXPECT_TRUE(menu_.isOpen());
  EXPECT_THAT(names_, ElementsAre("Work"));
}

TEST_F(SpaceRowTest, KeysOfARowThatIsNotEditedPass) {
  RecordingSpaceRowView& row = open();
  for (const RowKey key : {RowKey::Return, RowKey::KeypadEnter, RowKey::Escape, RowKey::Other}) {
    EXPECT_EQ(row.handler().keyDown(key), KeyHandling::Passed);
  }
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(SpaceRowTest, TheFieldsOwnCommandsCommitAndCancelLikeTheKeys) {
  RecordingSpaceRowView& row = edit();
  row.insert(" pasted ");
  row.handler().commit();
  EXPECT_EQ(row.state().label, " pasted ");
  EXPECT_THAT(names_, ElementsAre(" pasted "));
  row.hover();
  row.clickPencil();
  row.insert("again");
  row.handler().cancel();
  EXPECT_EQ(row.state().label, " pasted ");
  EXPECT_THAT(names_, ElementsAre(" pasted "));
}

TEST_F(SpaceRowTest, CommandsOfAFieldThatIsNotThereAreIgnored) {
  RecordingSpaceRowView& row = open();
  row.handler().commit();
  row.handler().cancel();
  EXPECT_EQ(row.changeCount(), 0);
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(SpaceRowTest, ThePencilWhileEditingDoesNothing) {
  RecordingSpaceRowView& row = edit();
  row.type("Wo");
  row.handler().renameClicked();
  row.type("rk");
  EXPECT_EQ(row.editedText(), "Work");
}

TEST_F(SpaceRowTest, ASecondRenameBeginsWithTheNameThatTheMenuOpenedWith) {
  RecordingSpaceRowView& row = edit();
  row.type("Work");
  row.press(RowKey::Return);
  row.hover();
  row.clickPencil();
  EXPECT_EQ(row.editedText(), "Mail");
  row.press(RowKey::Escape);
  EXPECT_EQ(row.state().label, "Work") << "the label's text before, not the field's";
}

TEST_F(SpaceRowTest, NamesOfAnyScriptAreKeptAsTheyAre) {
  const std::string name = "שולחן \u200fעבודה 👩‍👩‍👧‍👦 e\u0301";
  RecordingSpaceRowView& row = open({name, false, kRed, {}});
  EXPECT_EQ(row.state().label, name);
  row.hover();
  row.clickPencil();
  EXPECT_EQ(row.editedText(), name);
  row.press(RowKey::Return);
  EXPECT_EQ(row.state().label, name);
  EXPECT_THAT(names_, ElementsAre(name));
}

TEST_F(SpaceRowTest, OneRowOfAMenuIsEditedAtATime) {
  const auto rows = openAll({{"Mail", false, kRed, {}}, {"Code", false, kRed, {}}});
  rows[0]->hover();
  rows[0]->clickPencil();
  rows[0]->type("Post");
  rows[1]->hover();
  rows[1]->clickPencil();
  EXPECT_FALSE(rows[0]->state().isEditing);
  EXPECT_EQ(rows[0]->state().label, "Mail");
  EXPECT_TRUE(rows[1]->state().isEditing);
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(SpaceRowTest, AMenuThatClosesDuringTheEditingCommitsNothing) {
  RecordingSpaceRowView& row = edit();
  row.type("Work");
  menu_.close();
  EXPECT_THAT(names_, IsEmpty());
  menu_.setItems({});
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 0);
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(SpaceRowTest, ACommitMayEndTheRow) {
  std::vector<MenuItem> items;
  items.emplace_back(SpaceRow::create(
      {"Mail", false, kRed, {}}, {.onSwitch = {}, .onCommitRename = [this](std::string_view name) {
                                    menu_.close();
                                    menu_.setItems({});
                                    names_.emplace_back(name);
                                  }}));
  menu_.setItems(std::move(items));
  menu_.open();
  RecordingSpaceRowView& row = *menu_.rows().front();
  row.hover();
  row.clickPencil();
  row.type("Work");
  row.handler().commit();
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 0);
  EXPECT_THAT(names_, ElementsAre("Work"));
}

}  // namespace
}  // namespace vembrix
