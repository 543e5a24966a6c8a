#include "menubar/SpaceRowTest.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "settings/PreferencesStore.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

// How a row looks

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

// Where its parts are

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

// The pointer and the keyboard's selection

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

// Clicks

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

}  // namespace
}  // namespace vembrix
