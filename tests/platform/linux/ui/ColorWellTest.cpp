#include <gmock/gmock.h>

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest/QTest>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "platform/SettingsWindow.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/ui/ColorDialog.h"
#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/SettingsWindowTest.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ColorWellTest : public SettingsWindowTest {
 protected:
  void showWells(int count) {
    ColorGrid grid;
    for (int i = 0; i < count; ++i)
      grid.wells.push_back({"Desktop " + std::to_string(i + 1), kRed});
    grid.swatches = [this] { return swatches_; };
    grid.onChange = [this](int index, const Color& color) { changes_.emplace_back(index, color); };
    show({full(grid)});
  }

  ColorDialog* openDialog(const QString& name) {
    QTest::mouseClick(&control<ColorWell>(name), Qt::LeftButton);
    return control<ColorWell>(name).findChild<ColorDialog*>();
  }

  std::vector<std::pair<int, Color>> changes_;
  std::vector<ColorGrid::Well> swatches_;
};

TEST_F(ColorWellTest, OpensTheDialogAndReportsWhatIsTriedOut) {
  showWells(3);
  ColorDialog* dialog = openDialog("Desktop 2");
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->currentColor(), QColor(Qt::red));
  EXPECT_THAT(changes_, IsEmpty());
  dialog->setCurrentColor(Qt::blue);
  EXPECT_THAT(changes_, ElementsAre(std::pair(1, Color(kBlue))));
  EXPECT_EQ(control<ColorWell>("Desktop 2").color(), Color(kBlue));
  dialog->accept();
  EXPECT_EQ(changes_.size(), 1U);
}

TEST_F(ColorWellTest, CancellingTakesTheColorBack) {
  showWells(1);
  ColorDialog* dialog = openDialog("Desktop 1");
  dialog->setCurrentColor(Qt::blue);
  dialog->reject();
  EXPECT_THAT(changes_, ElementsAre(std::pair(0, Color(kBlue)), std::pair(0, Color(kRed))));
}

TEST_F(ColorWellTest, CancellingWithoutAChangeReportsNothing) {
  showWells(1);
  openDialog("Desktop 1")->reject();
  EXPECT_THAT(changes_, IsEmpty());
}

TEST_F(ColorWellTest, TheDialogHasTheWindowsAppearanceAndFontAndPlainButtons) {
  SettingsContent content = themedWith(tabOf({full(ColorGrid{{{"W", kRed}}, {}, {}})}));
  content.chrome.appearance = Appearance::Dark;
  show(content);
  ColorDialog* dialog = openDialog("W");
  EXPECT_LT(dialog->grab().toImage().pixelColor(2, 2).lightnessF(), 0.3F);
  const QFont font = nativeFont(Font{});
  for (const QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
    EXPECT_TRUE(button->icon().isNull()) << button->text().toStdString();
    EXPECT_FALSE(button->text().contains('&')) << button->text().toStdString();
    EXPECT_EQ(button->font().family(), font.family());
  }
}

TEST_F(ColorWellTest, TheDialogOffersTheSwatchesRowByRowAndThenItsOwn) {
  constexpr int kRows = 6;
  const QColor last = QColorDialog::standardColor(47);
  showWells(1);
  for (int i = 0; i < 9; ++i) swatches_.push_back({"", Srgb{0, i / 10.0, 1}});
  openDialog("Desktop 1")->reject();
  clearRetired();
  EXPECT_EQ(QColorDialog::standardColor(0), QColor::fromRgbF(0, 0, 1));
  EXPECT_EQ(QColorDialog::standardColor(7 * kRows).rgb(), QColor::fromRgbF(0, 0.7F, 1).rgb());
  EXPECT_EQ(QColorDialog::standardColor(1).rgb(), QColor::fromRgbF(0, 0.8F, 1).rgb());
  EXPECT_EQ(QColorDialog::standardColor(47), last);
  swatches_.resize(60, {"", kBlue});
  openDialog("Desktop 1")->reject();
  clearRetired();
  EXPECT_EQ(QColorDialog::standardColor(47), QColor(Qt::blue));
  swatches_.clear();
  openDialog("Desktop 1")->reject();
  EXPECT_EQ(QColorDialog::standardColor(47), last) << "Qt's own come back";
}

TEST_F(ColorWellTest, AFocusedControlOfTheDialogIsNotPaintedOverAndOver) {
  showWells(1);
  QWidget* focused = openDialog("Desktop 1")->focusWidget();
  ASSERT_NE(focused, nullptr);
  EXPECT_EQ(paintingsAtRest(*focused), 1);
}

TEST_F(ColorWellTest, TheDialogLeavesThePlaceOverTheWellThatAWindowManagerGivesIt) {
  showWells(1);
  ColorDialog* dialog = openDialog("Desktop 1");
  const QWidget& well = control<ColorWell>("Desktop 1");
  const QRect place(well.mapToGlobal(QPoint()), well.size());
  const QPoint beside = dialog->pos();
  ASSERT_FALSE(dialog->frameGeometry().intersects(place));
  const QPoint over = place.center() - dialog->rect().center();
  dialog->move(over);
  EXPECT_TRUE(runUntil([&] { return dialog->pos() == beside; }));
  // The user may cover it.
  dialog->move(over);
  dialog->repaint();
  runFor(std::chrono::milliseconds(20));
  EXPECT_TRUE(dialog->frameGeometry().intersects(place));
}

TEST(ColorDialogTest, StandsBesideTheWindowWhereThereIsRoom) {
  const QRect whole(0, 24, 1440, 876);
  const auto place = [](const QRect& window, const QRect& screen) {
    constexpr QSize kDialog(300, 600);
    const QRect well(window.center(), QSize(44, 24));
    const QRect dialog(placeBeside(window, well, kDialog, screen), kDialog);
    EXPECT_FALSE(dialog.intersects(well));
    EXPECT_TRUE(screen.contains(dialog));
    return dialog;
  };
  const QRect middle(420, 190, 600, 548);
  EXPECT_EQ(place(middle, whole).topLeft(), QPoint(1028, 190));
  EXPECT_EQ(place(middle.translated(300, 0), whole).right() + 1 + 8, 720);
  EXPECT_EQ(place(middle.translated(0, 150), whole).bottom(), whole.bottom());
  // The screen is to the left of the first one.
  EXPECT_EQ(place(middle.translated(-1440, 0), whole.translated(-1440, 0)).left(), -412);
  // If there is room on neither side, it covers the window but not the well.
  EXPECT_TRUE(place({100, 60, 600, 548}, {0, 0, 800, 720}).intersects({100, 60, 600, 548}));
}

TEST(ColorDialogTest, ATooSmallScreenShowsItsTop) {
  const QRect screen(0, 0, 320, 240);
  EXPECT_EQ(placeBeside(screen, {40, 100, 44, 24}, {300, 600}, screen), QPoint(20, 0));
  EXPECT_EQ(placeBeside(screen, {260, 100, 44, 24}, {300, 600}, screen), QPoint(0, 0));
}

TEST_F(ColorWellTest, OtherContentClosesTheDialog) {
  showWells(1);
  const QPointer<ColorDialog> dialog = openDialog("Desktop 1");
  show(std::vector<FormRow>{});
  clearRetired();
  EXPECT_TRUE(dialog.isNull());
}

TEST_F(ColorWellTest, ALongNameHasTheRoomThatTheOtherColumnLeaves) {
  const std::string name = "The desktop with a name that is not short at all";
  const std::vector<ColorGrid::Well> shortAndLong{{"A", kRed}, {name, kRed}};
  const std::vector<ColorGrid::Well> longAndShort{{name, kRed}, {"A", kRed}};
  for (const auto& wells : {shortAndLong, longAndShort}) {
    show({full(ColorGrid{wells, {}, {}})});
    clearRetired();
    std::vector<std::string> shown;
    for (const QLabel* label : control<ColorWell>().parentWidget()->findChildren<QLabel*>()) {
      shown.push_back(label->text().toStdString());
    }
    EXPECT_THAT(shown, ElementsAre(wells[0].name, wells[1].name));
  }
}

TEST_F(ColorWellTest, StandsInPairsOfColumns) {
  showWells(3);
  const auto place = [](const char* name) { return control<ColorWell>(name).geometry(); };
  const QRect first = place("Desktop 1");
  const QRect second = place("Desktop 2");
  const QRect third = place("Desktop 3");
  EXPECT_EQ(first.size(), QSize(44, 24));
  EXPECT_EQ(second.top(), first.top());
  EXPECT_EQ(third.left(), first.left());
  EXPECT_EQ(third.top(), first.top() + 24 + 12);
  const int name = QFontMetrics(control<ColorWell>().parentWidget()->findChild<QLabel*>()->font())
                       .horizontalAdvance("Desktop 2");
  EXPECT_NEAR(second.left() - (first.right() + 1), 12 + 28 + name + 12, 2);
}

TEST_F(ColorWellTest, TwentyDesktopsScrollAndTheTabKeyGetsToTheLast) {
  showWells(30);
  QScrollArea& area = control<QScrollArea>();
  EXPECT_TRUE(area.verticalScrollBar()->isVisible());
  EXPECT_FALSE(control<ColorWell>("Desktop 30").visibleRegion().boundingRect().height() == 24);
  control<ColorWell>("Desktop 1").setFocus();
  for (int i = 1; i < 30; ++i) QTest::keyClick(widget().focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(focusedName(), "Desktop 30");
  EXPECT_EQ(control<ColorWell>("Desktop 30").visibleRegion().boundingRect().height(), 24);
}

TEST_F(ColorWellTest, WithoutDesktopsTheGridIsEmpty) {
  showWells(0);
  EXPECT_EQ(widget().findChildren<ColorWell*>().size(), 0);
}

}  // namespace
}  // namespace vembrix
