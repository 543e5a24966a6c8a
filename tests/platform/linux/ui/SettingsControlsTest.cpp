#include <gmock/gmock.h>

#include <QtTest/qtestspontaneevent.h>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QWheelEvent>
#include <QtTest/QTest>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/Application.h"
#include "platform/SettingsWindow.h"
#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/SettingsWindowTest.h"
#include "platform/linux/ui/controls/FocusRing.h"
#include "platform/linux/ui/controls/PillTabButton.h"
#include "platform/linux/ui/controls/SliderControl.h"

namespace vembrix {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;

// Controls

TEST_F(SettingsWindowTest, ASliderShowsItsValueAndReportsTheUsersOnly) {
  std::vector<double> values;
  Slider slider{60, 300, 180, [&](double value) { values.push_back(value); }, "Size"};
  show({row(slider)});
  auto& control = SettingsWindowTest::control<SliderControl>("Size");
  EXPECT_EQ(control.number(), 180);
  EXPECT_EQ(control.width(), 220);
  EXPECT_THAT(values, IsEmpty());
  QTest::mouseClick(&control, Qt::LeftButton, {}, {219, 11});
  QTest::mouseClick(&control, Qt::LeftButton, {}, {0, 11});
  ASSERT_EQ(values.size(), 2U);
  EXPECT_EQ(values[0], 300);
  EXPECT_EQ(values[1], 60);
  QTest::keyClick(&control, Qt::Key_Right);
  ASSERT_EQ(values.size(), 3U);
  EXPECT_DOUBLE_EQ(values[2], 62.4);
}

TEST_F(SettingsWindowTest, ASliderReportsEveryChangeOfADrag) {
  std::vector<double> values;
  show({row(Slider{0, 1, 0, [&](double value) { values.push_back(value); }, "Size"})});
  auto& control = SettingsWindowTest::control<SliderControl>();
  QTest::mousePress(&control, Qt::LeftButton, {}, {9, 11});
  for (const int x : {60, 110, 160}) QTest::mouseMove(&control, {x, 11});
  QTest::mouseRelease(&control, Qt::LeftButton, {}, {160, 11});
  ASSERT_GE(values.size(), 3U);
  EXPECT_THAT(values[values.size() - 1], AllOf(Ge(0.7), Le(0.8)));
}

TEST_F(SettingsWindowTest, ASliderOutsideOfItsRangeShowsTheNearerEnd) {
  for (const auto& [value, shown] : {std::pair{5.0, 60.0}, {1e9, 300.0}, {NAN, 60.0}}) {
    show({row(Slider{60, 300, value, {}, "Size"})});
    clearRetired();
    EXPECT_EQ(SettingsWindowTest::control<SliderControl>().number(), shown);
  }
}

TEST_F(SettingsWindowTest, ACheckboxShowsItsStateAndReportsTheUsers) {
  std::vector<bool> states;
  show({full(Checkbox{"Tom & Jerry", true, [&](bool isOn) { states.push_back(isOn); }, {}})});
  auto& box = control<QCheckBox>("Tom & Jerry");
  EXPECT_TRUE(box.isChecked());
  EXPECT_THAT(states, IsEmpty());
  QTest::mouseClick(&box, Qt::LeftButton, {}, {7, 9});
  QTest::keyClick(&box, Qt::Key_Space);
  EXPECT_THAT(states, ElementsAre(false, true));
}

TEST_F(SettingsWindowTest, APopupShowsItsItemAndReportsEveryChoice) {
  std::vector<std::string> choices;
  Popup popup;
  popup.items = {"Ember", "Ice", "Moss"};
  popup.selected = 1;
  popup.accessibleName = "Colors";
  popup.onSelect = [&](int index, const std::string& title) {
    choices.push_back(std::to_string(index) + title);
  };
  show({row(popup)});
  auto& button = control<QComboBox>("Colors");
  EXPECT_EQ(button.currentText(), "Ice");
  EXPECT_EQ(button.width(), 220);
  EXPECT_THAT(choices, IsEmpty());
  QTest::keyClick(&button, Qt::Key_Down);
  button.showPopup();
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Return);
  EXPECT_THAT(choices, ElementsAre("2Moss", "2Moss"));
}

TEST_F(SettingsWindowTest, TheChosenItemOfAnOpenPopupLiesOverItsButton) {
  Popup popup = popupOf("P");
  popup.items = {"Ember", "Ice", "Moss"};
  show({row(boxOf("Box")), row(boxOf("Another")), row(boxOf("Third")), row(popup)});
  auto& button = control<QComboBox>("P");
  for (int index = 0; index < button.count(); ++index) {
    button.setCurrentIndex(index);
    button.showPopup();
    const QAbstractItemView& items = *button.view();
    const QRect item = items.visualRect(items.currentIndex());
    const int middle = items.viewport()->mapToGlobal(item.center()).y();
    EXPECT_EQ(middle, button.mapToGlobal(button.rect().center()).y()) << index;
    button.hidePopup();
  }
}

TEST_F(SettingsWindowTest, APopupMayShowNoItem) {
  show({row(popupOf("P"))});
  EXPECT_EQ(control<QComboBox>().currentIndex(), -1);
}

TEST_F(SettingsWindowTest, TheWheelScrollsThePageAndChangesNothing) {
  int changes = 0;
  std::vector<FormRow> rows;
  rows.push_back(row(Slider{0, 1, 0.5, [&](double) { changes += 1; }, "S"}));
  rows.push_back(
      row(Popup{{"A", "B"}, 0, [&](int, const std::string&) { changes += 1; }, {}, "P"}));
  for (int i = 0; i < 40; ++i) rows.push_back(full(Header{"Header", {}}));
  show(std::move(rows));
  const QScrollBar& scroller = *control<QScrollArea>().verticalScrollBar();
  for (QWidget* target : {static_cast<QWidget*>(&control<SliderControl>()),
                          static_cast<QWidget*>(&control<QComboBox>())}) {
    const int before = scroller.value();
    QWheelEvent event(QPointF(5, 5), target->mapToGlobal(QPointF(5, 5)), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    // Marked as the user's input; only then Qt passes it on to parents.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(target, &event);
    EXPECT_GT(scroller.value(), before);
  }
  EXPECT_EQ(changes, 0);
}

TEST_F(SettingsWindowTest, APushButtonActsAndCanBeDisabled) {
  int clicks = 0;
  PushButton button = buttonOf("Copy", [&] { clicks += 1; });
  button.id = "copy";
  show({full(button)});
  auto& control = SettingsWindowTest::control<QPushButton>("Copy");
  QTest::mouseClick(&control, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  window_->setEnabled("copy", false);
  QTest::mouseClick(&control, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  window_->setEnabled("other", true);
  EXPECT_FALSE(control.isEnabled());
  window_->setEnabled("copy", true);
  QTest::mouseClick(&control, Qt::LeftButton);
  EXPECT_EQ(clicks, 2);
}

TEST_F(SettingsWindowTest, AStatusLabelTakesItsLineWhenEmptyAndShowsWhatItIsTold) {
  show({full(StatusLabel{{}, {}, "status"}), full(boxOf("Below"))});
  const auto& label = control<QLabel>();
  EXPECT_GE(label.height(), QFontMetrics(label.font()).height());
  const int below = control<QCheckBox>().y();
  window_->setStatus("other", "no");
  EXPECT_EQ(label.text(), "");
  window_->setStatus("status", "Gathering log\u2026");
  EXPECT_EQ(label.text(), QString::fromUtf8("Gathering log\u2026"));
  EXPECT_EQ(label.width(), label.sizeHint().width()) << "has room for its text";
  EXPECT_EQ(control<QCheckBox>().y(), below);
}

TEST_F(SettingsWindowTest, ASelectableTextAndACommandCanBeSelectedNotEdited) {
  const std::string command(200, 'x');
  show({row(SelectableText{"1.0", {}, "Version"}), full(commandOf("Command", command))});
  for (const char* name : {"Version", "Command"}) {
    auto& line = control<QLineEdit>(name);
    const QString text = line.text();
    QTest::keyClicks(&line, "abc");
    EXPECT_EQ(line.text(), text);
    line.selectAll();
    EXPECT_EQ(line.selectedText(), text);
  }
  // As wide as the page without its margins.
  EXPECT_EQ(control<QLineEdit>("Command").width(), 600 - 2 * 16 - 2 * 20);
}

TEST_F(SettingsWindowTest, AWrappingTextTakesTheLinesThatItNeeds) {
  std::string words;
  for (int i = 0; i < 60; ++i) words += "several words ";
  show({full(WrappingLabel{words, {}})});
  const auto& label = control<QLabel>();
  EXPECT_EQ(label.width(), 600 - 2 * 16 - 2 * 20);
  EXPECT_GE(label.height(), 5 * QFontMetrics(label.font()).height());
}

TEST_F(SettingsWindowTest, AFocusedControlIsNotPaintedOverAndOver) {
  show({row(boxOf("Box")), row(popupOf("Popup"))});
  for (QWidget* focused :
       std::array<QWidget*, 2>{&control<QCheckBox>("Box"), &control<QComboBox>("Popup")}) {
    focused->setFocus(Qt::TabFocusReason);
    ASSERT_EQ(QApplication::focusWidget(), focused);
    EXPECT_EQ(paintingsAtRest(*focused), 1) << focused->accessibleName().toStdString();
  }
}

// Keyboard and assistive programs

TEST_F(SettingsWindowTest, TheTabKeyGoesFromRowToRow) {
  show({row(Slider{0, 1, 0, {}, "S"}), full(boxOf("C")), row(popupOf("P")),
        full(ColorGrid{{{"W1", kRed}, {"W2", kRed}}, {}, {}}), full(buttonOf("B")),
        full(commandOf("F"))});
  std::vector<QString> visited;
  for (int i = 0; i < 10; ++i) {
    QTest::keyClick(widget().focusWidget(), Qt::Key_Tab);
    visited.push_back(focusedName());
  }
  EXPECT_THAT(visited, ElementsAre("One", "Two", "Three", "S", "C", "P", "W1", "W2", "B", "F"));
}

TEST_F(SettingsWindowTest, ARingShowsWhereTheKeyboardIs) {
  show({full(boxOf("C")), full(buttonOf("B"))});
  const auto& ring = control<FocusRing>();
  EXPECT_FALSE(ring.isVisible());
  const QPushButton& button = control<QPushButton>("B");
  const QPoint edge = button.mapTo(&widget(), QPoint(button.width() / 2, -2));
  const QRgb before = pixel(edge);
  control<QPushButton>("B").setFocus();
  EXPECT_TRUE(ring.isVisible());
  EXPECT_TRUE(ring.geometry().contains(button.geometry()));
  EXPECT_NE(pixel(edge), before);
}

TEST_F(SettingsWindowTest, AssistiveProgramsAreToldWhatAControlIs) {
  show({row(Slider{60, 300, 180, {}, "Size"}), row(popupOf("Colors")),
        full(ColorGrid{{{"Desktop 1", kRed}}, {}, {}})});
  const auto describe = [](QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget);
  };
  auto* slider = describe(control<SliderControl>());
  EXPECT_EQ(slider->role(), QAccessible::Slider);
  EXPECT_EQ(slider->text(QAccessible::Name), "Size");
  ASSERT_NE(slider->valueInterface(), nullptr);
  EXPECT_EQ(slider->valueInterface()->currentValue().toDouble(), 180);
  EXPECT_EQ(slider->valueInterface()->maximumValue().toDouble(), 300);
  EXPECT_EQ(describe(control<QComboBox>())->role(), QAccessible::ComboBox);
  EXPECT_EQ(describe(control<QComboBox>())->text(QAccessible::Name), "Colors");
  EXPECT_EQ(describe(control<ColorWell>())->role(), QAccessible::ColorChooser);
  EXPECT_EQ(describe(control<ColorWell>())->text(QAccessible::Value), "#ff0000");
  auto* tab = describe(control<PillTabButton>("One"));
  EXPECT_EQ(tab->role(), QAccessible::PageTab);
  EXPECT_TRUE(tab->state().selected);
  EXPECT_FALSE(describe(control<PillTabButton>("Two"))->state().selected);
}

}  // namespace
}  // namespace vembrix
