#include "menubar/SpaceRow.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Srgb kRed{1, 0, 0, 1};
constexpr Srgb kGlow{1, 0.64, 0.24, 0.78};
/// The accent of Alpine, the theme at first, as it tints a row.
constexpr Srgb kAlpineTint{0.29, 0.56, 0.85, 0.16};
constexpr Size kBounds = row_metrics::kSize;
constexpr double kMiddle = kBounds.height / 2;

/// What a row of that label shows that nothing has been done to.
SpaceRowState idle(const char* label) {
  SpaceRowState state;
  state.label = label;
  return state;
}

/// Rows in an open menu, which has opened anew with each call of open().
class SpaceRowTest : public testing::Test {
 protected:
  RecordingSpaceRowView& open(const SpaceRow::Desktop& desktop = {.displayName = "Mail",
                                                                  .isActive = false,
                                                                  .dotColor = kRed,
                                                                  .heatGlow = {}}) {
    return *openAll({desktop}).front();
  }

  std::vector<RecordingSpaceRowView*> openAll(const std::vector<SpaceRow::Desktop>& desktops) {
    menu_.close();
    std::vector<MenuItem> items;
    items.reserve(desktops.size());
    for (const SpaceRow::Desktop& desktop : desktops) {
      items.emplace_back(SpaceRow::create(
          desktop,
          {.onSwitch = [this] { switches_ += 1; },
           .onCommitRename = [this](std::string_view name) { names_.emplace_back(name); }}));
    }
    menu_.setItems(std::move(items));
    menu_.open();
    return menu_.rows();
  }

  /// A row whose name is being edited.
  RecordingSpaceRowView& edit() {
    RecordingSpaceRowView& row = open();
    row.hover();
    row.clickPencil();
    return row;
  }

  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
  RecordingDropdownMenu menu_;
  int switches_ = 0;
  std::vector<std::string> names_;
};

// How a row looks.

TEST_F(SpaceRowTest, BeginsIdleWithItsName) {
  const RecordingSpaceRowView& row = open();
  EXPECT_EQ(row.state(), idle("Mail"));
  EXPECT_EQ(row.content().renameTitle, "Rename");
}

TEST_F(SpaceRowTest, TheActiveRowsDotIsAFilled14PointDisc) {
  const DotImage dot = makeDot({"Mail", true, kRed, {}});
  EXPECT_EQ(dot.size, (Size{14, 14}));
  ASSERT_EQ(dot.ovals.size(), 1U);
  EXPECT_EQ(dot.ovals[0].rect, (Rect{0, 0, 14, 14}));
  EXPECT_EQ(dot.ovals[0].fill, Color(kRed));
  EXPECT_EQ(dot.ovals[0].stroke, std::nullopt);
}

TEST_F(SpaceRowTest, AnActiveDiscDoesNotGlow) {
  EXPECT_EQ(makeDot({"Mail", true, kRed, kGlow}), makeDot({"Mail", true, kRed, {}}));
}

TEST_F(SpaceRowTest, AnInactiveRowsDotIsA12PointRingOfWidthOneAndAHalf) {
  const DotImage dot = makeDot({"Mail", false, kRed, {}});
  EXPECT_EQ(dot.size, (Size{14, 14}));
  ASSERT_EQ(dot.ovals.size(), 1U);
  EXPECT_EQ(dot.ovals[0].rect, (Rect{1, 1, 12, 12}));
  EXPECT_EQ(dot.ovals[0].fill, std::nullopt);
  EXPECT_EQ(dot.ovals[0].stroke, Color(kRed));
  EXPECT_EQ(dot.ovals[0].lineWidth, 1.5);
}

TEST_F(SpaceRowTest, AWarmRingGlowsInside) {
  const DotImage dot = makeDot({"Mail", false, kRed, kGlow});
  ASSERT_EQ(dot.ovals.size(), 1U);
  EXPECT_EQ(dot.ovals[0].fill, Color(kGlow));
  EXPECT_EQ(dot.ovals[0].stroke, Color(kRed)) << "the stroke is painted over the glow";
}

TEST_F(SpaceRowTest, TheRowShowsItsDot) {
  const SpaceRow::Desktop desktop{"Mail", false, kRed, kGlow};
  EXPECT_EQ(open(desktop).content().dot, makeDot(desktop));
}

TEST_F(SpaceRowTest, TheDotIsDescribedForThoseWhoDoNotSeeIt) {
  EXPECT_EQ(open({"Mail", true, kRed, {}}).content().dotDescription, "current");
  EXPECT_EQ(open({"Mail", true, kRed, kGlow}).content().dotDescription, "current");
  EXPECT_EQ(open({"Mail", false, kRed, kGlow}).content().dotDescription, "recently used");
  EXPECT_EQ(open({"Mail", false, kRed, {}}).content().dotDescription, "");
}

TEST_F(SpaceRowTest, TheActiveNameIsSemibold) {
  EXPECT_EQ(open({"Mail", true, kRed, {}}).content().font,
            (Font{Font::Design::System, Font::Weight::Semibold, {}}));
  EXPECT_EQ(open().content().font, (Font{Font::Design::System, Font::Weight::Regular, {}}));
}

TEST_F(SpaceRowTest, AMonospacedThemeMakesTheNamesMonospaced) {
  store_.setThemeName("Paper");
  EXPECT_EQ(open().content().font, (Font{Font::Design::Monospaced, Font::Weight::Regular, {}}));
  EXPECT_EQ(open({"Mail", true, kRed, {}}).content().font,
            (Font{Font::Design::Monospaced, Font::Weight::Semibold, {}}));
}

// Where its parts are.

TEST_F(SpaceRowTest, ThePartsStandByTheRowsWidthAndHeight) {
  EXPECT_EQ(layOutRow({220, 24}), (SpaceRowLayout{.dot = {14, 5, 14, 14},
                                                  .label = {38, 0, 142, 24},
                                                  .editField = {38, 2, 172, 20},
                                                  .renameButton = {188, 1, 22, 22}}));
  EXPECT_EQ(layOutRow({300, 30}), (SpaceRowLayout{.dot = {14, 8, 14, 14},
                                                  .label = {38, 0, 222, 30},
                                                  .editField = {38, 5, 252, 20},
                                                  .renameButton = {268, 4, 22, 22}}));
}

TEST_F(SpaceRowTest, OutsideTheRowNothingIsHit) {
  RecordingSpaceRowView& row = open();
  for (const Point point : {Point{-1, 5}, Point{220, 5}, Point{5, -1}, Point{5, 24}}) {
    EXPECT_EQ(row.partAt(point), RowPart::None) << point.x << ", " << point.y;
  }
  EXPECT_EQ(row.partAt({0, 0}), RowPart::Row);
  EXPECT_EQ(row.partAt({219.5, 23.5}), RowPart::Row);
}

TEST_F(SpaceRowTest, TheDotAndTheNameAreTheRow) {
  RecordingSpaceRowView& row = open();
  EXPECT_EQ(row.partAt({20, kMiddle}), RowPart::Row);
  EXPECT_EQ(row.partAt({60, kMiddle}), RowPart::Row);
}

TEST_F(SpaceRowTest, TheButtonIsHitOnlyWhileItShows) {
  RecordingSpaceRowView& row = open();
  EXPECT_EQ(row.partAt({199, kMiddle}), RowPart::Row);
  row.hover();
  EXPECT_EQ(row.partAt({199, kMiddle}), RowPart::RenameButton);
  EXPECT_EQ(row.partAt({188, 1}), RowPart::RenameButton);
  EXPECT_EQ(row.partAt({187, kMiddle}), RowPart::Row);
  EXPECT_EQ(row.partAt({210, kMiddle}), RowPart::Row);
  EXPECT_EQ(row.partAt({199, 0.5}), RowPart::Row);
}

TEST_F(SpaceRowTest, TheFieldIsHitOnlyWhileItShows) {
  RecordingSpaceRowView& row = edit();
  EXPECT_EQ(row.partAt({60, kMiddle}), RowPart::EditField);
  EXPECT_EQ(row.partAt({199, kMiddle}), RowPart::EditField) << "where the button was";
  EXPECT_EQ(row.partAt({20, kMiddle}), RowPart::Row);
  EXPECT_EQ(row.partAt({60, 1}), RowPart::Row);
  row.press(RowKey::Escape);
  EXPECT_EQ(row.partAt({60, kMiddle}), RowPart::Row);
}

TEST_F(SpaceRowTest, AWideRowsButtonIsAtItsTrailingEdge) {
  RecordingSpaceRowView& row = open();
  row.setBounds({400, 24});
  row.hover();
  EXPECT_EQ(row.partAt({199, kMiddle}), RowPart::Row);
  EXPECT_EQ(row.partAt({379, kMiddle}), RowPart::RenameButton);
}

TEST_F(SpaceRowTest, ARowWithoutExtentIsNeverHit) {
  RecordingSpaceRowView& row = edit();
  row.setBounds({0, 0});
  EXPECT_EQ(row.partAt({0, 0}), RowPart::None);
}

// The pointer and the keyboard's selection.

TEST_F(SpaceRowTest, ThePointerShowsThePencilAndTheTint) {
  RecordingSpaceRowView& row = open();
  row.hover();
  EXPECT_EQ(row.state(), (SpaceRowState{.label = "Mail",
                                        .isEditing = false,
                                        .showsRenameButton = true,
                                        .background = Color(kAlpineTint)}));
  row.leave();
  EXPECT_EQ(row.state(), idle("Mail"));
}

TEST_F(SpaceRowTest, TheTintIsThatOfTheThemeAtEachHover) {
  RecordingSpaceRowView& row = open();
  row.hover();
  store_.setThemeName("Coral");
  row.hover();
  EXPECT_EQ(row.state().background, Color(Srgb{1.0, 0.39, 0.39, 0.16}));
  store_.setThemeName("Stock");
  row.hover();
  EXPECT_EQ(row.state().background, Color(SystemColor::ControlAccent, 0.16));
}

TEST_F(SpaceRowTest, BeingToldOfTheSameHoverAgainChangesAndAllocatesNothing) {
  RecordingSpaceRowView& row = open();
  row.hover();
  const int changes = row.changeCount();
  const std::size_t before = allocationCount();
  row.hover();
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(row.changeCount(), changes);
}

TEST_F(SpaceRowTest, TheKeyboardsSelectionTintsWithoutAPencil) {
  RecordingSpaceRowView& row = open();
  menu_.highlight(0);
  EXPECT_EQ(row.state().background, Color(kAlpineTint));
  EXPECT_FALSE(row.state().showsRenameButton);
  menu_.highlight(std::nullopt);
  EXPECT_EQ(row.state(), idle("Mail"));
}

TEST_F(SpaceRowTest, ThePointerMayLeaveASelectedRow) {
  RecordingSpaceRowView& row = open();
  menu_.highlight(0);
  row.hover();
  row.leave();
  EXPECT_EQ(row.state().background, Color(kAlpineTint));
  EXPECT_FALSE(row.state().showsRenameButton);
}

TEST_F(SpaceRowTest, AClosedMenuLeavesNoPencilAndNoTint) {
  RecordingSpaceRowView& row = open();
  menu_.highlight(0);
  row.hover();
  menu_.close();
  EXPECT_EQ(row.state(), idle("Mail"));
}

TEST_F(SpaceRowTest, HoverIsIgnoredWhileEditing) {
  RecordingSpaceRowView& row = edit();
  const SpaceRowState editing = row.state();
  EXPECT_TRUE(editing.isEditing);
  row.leave();
  EXPECT_EQ(row.state(), editing);
  row.hover();
  EXPECT_EQ(row.state(), editing);
  menu_.highlight(0);
  EXPECT_EQ(row.state(), editing);
}

TEST_F(SpaceRowTest, APointerThatLeftDuringTheEditingLeavesNoTint) {
  RecordingSpaceRowView& row = edit();
  row.leave();
  row.press(RowKey::Escape);
  EXPECT_EQ(row.state(), idle("Mail"));
}

TEST_F(SpaceRowTest, ThePencilStaysHiddenAfterEditingUntilTheNextHover) {
  RecordingSpaceRowView& row = edit();
  row.press(RowKey::Escape);
  EXPECT_FALSE(row.state().showsRenameButton);
  row.hover();
  EXPECT_TRUE(row.state().showsRenameButton);
}

// Clicks.

TEST_F(SpaceRowTest, AClickOnTheDotOrTheNameClosesTheMenuAndThenSwitches) {
  open().clickDot();
  EXPECT_FALSE(menu_.isOpen());
  EXPECT_EQ(switches_, 0) << "only after the event";
  queue_.runPending();
  EXPECT_EQ(switches_, 1);
  open().clickName();
  EXPECT_FALSE(menu_.isOpen());
  queue_.runPending();
  EXPECT_EQ(switches_, 2);
}

TEST_F(SpaceRowTest, AClickOnTheVisiblePencilDoesNotSwitch) {
  RecordingSpaceRowView& row = open();
  row.hover();
  row.clickPencil();
  queue_.runPending();
  EXPECT_EQ(switches_, 0);
  EXPECT_TRUE(menu_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
}

TEST_F(SpaceRowTest, AReleaseOnTheVisiblePencilThatReachesTheRowIsIgnored) {
  RecordingSpaceRowView& row = open();
  row.hover();
  row.handler().mouseUp({199, kMiddle}, kBounds);
  queue_.runPending();
  EXPECT_EQ(switches_, 0);
  EXPECT_TRUE(menu_.isOpen());
}

TEST_F(SpaceRowTest, AClickWhereAHiddenPencilIsSwitches) {
  open().clickPencil();
  queue_.runPending();
  EXPECT_EQ(switches_, 1);
}

TEST_F(SpaceRowTest, AClickWhileEditingIsIgnored) {
  RecordingSpaceRowView& row = edit();
  row.clickDot();
  row.clickName();
  row.handler().mouseUp({20, kMiddle}, kBounds);
  queue_.runPending();
  EXPECT_EQ(switches_, 0);
  EXPECT_TRUE(menu_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
}

TEST_F(SpaceRowTest, ChoosingTheRowWithTheKeyboardSwitchesLikeAClick) {
  open();
  menu_.highlight(0);
  menu_.press(RowKey::Return);
  EXPECT_FALSE(menu_.isOpen());
  EXPECT_EQ(switches_, 0);
  queue_.runPending();
  EXPECT_EQ(switches_, 1);
}

TEST_F(SpaceRowTest, AnEditedRowIsNotActivated) {
  RecordingSpaceRowView& row = edit();
  row.handler().activate();
  queue_.runPending();
  EXPECT_EQ(switches_, 0);
  EXPECT_TRUE(menu_.isOpen());
}

TEST_F(SpaceRowTest, TheSwitchHappensAlsoWhenTheRowIsGoneByThen) {
  open().clickName();
  menu_.setItems({});
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 0);
  queue_.runPending();
  EXPECT_EQ(switches_, 1);
}

TEST_F(SpaceRowTest, ARowWithoutActionsOnlyShows) {
  std::vector<MenuItem> items;
  items.emplace_back(SpaceRow::create({"Mail", false, kRed, {}}, {}));
  menu_.setItems(std::move(items));
  menu_.open();
  RecordingSpaceRowView& row = *menu_.rows().front();
  row.hover();
  row.clickPencil();
  row.type("x");
  row.press(RowKey::Return);
  EXPECT_EQ(row.state().label, "x");
  row.leave();
  row.clickName();
  EXPECT_FALSE(menu_.isOpen());
  queue_.runPending();
}

// Renaming.

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
