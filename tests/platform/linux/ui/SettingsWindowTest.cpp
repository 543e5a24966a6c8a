#include "platform/SettingsWindow.h"

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
#include <QTabBar>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest/QTest>
#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "platform/Application.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/support/TestSession.h"
#include "platform/linux/ui/ColorDialog.h"
#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/SettingsContentView.h"
#include "platform/linux/ui/ThemedView.h"
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

constexpr Srgb kRed{1, 0, 0};
constexpr Srgb kBlue{0, 0, 1};

SettingsTab tabOf(std::vector<FormRow> rows) {
  return {.identifier = "tab", .label = "Tab", .form = {.rows = std::move(rows)}};
}

NavigationLayout pills() {
  NavigationLayout layout;
  layout.spacing = 4;
  layout.top = 38;
  layout.content = {.top = 78, .leading = 16, .bottom = 16, .trailing = 16};
  return layout;
}

NavigationLayout sidebar() {
  NavigationLayout layout;
  layout.axis = NavigationLayout::Axis::Vertical;
  layout.spacing = 2;
  layout.top = 48;
  layout.leading = 12;
  layout.buttonWidth = 128;
  layout.separator = NavigationLayout::Separator{.leading = 150, .width = 1, .color = kRed};
  layout.content = {.top = 40, .leading = 163, .bottom = 14, .trailing = 14};
  return layout;
}

std::vector<TabButton> buttonsOf(const std::vector<std::string>& texts, std::size_t selected = 0) {
  std::vector<TabButton> buttons;
  for (const std::string& text : texts) {
    TabButton button;
    button.text = text;
    button.style.font.size = 12.5;
    button.isSelected = buttons.size() == selected;
    buttons.push_back(button);
  }
  return buttons;
}

SettingsContent themedWith(SettingsTab tab, const NavigationLayout& navigation = pills()) {
  ThemedContent body;
  body.rootSize = {600, 548};
  body.backdrop = Color(kWhite);
  body.navigation = navigation;
  body.page = {buttonsOf({"One", "Two", "Three"}), std::move(tab)};
  WindowChrome chrome;
  chrome.appearance = Appearance::Light;
  chrome.hasFullSizeContent = true;
  return {chrome, std::move(body)};
}

SettingsContent plainWith(std::vector<SettingsTab> tabs, std::size_t selected = 0) {
  return {WindowChrome{}, PlainContent{{600, 520}, 12, std::move(tabs), selected}};
}

FormRow row(FormControl control) {
  return ControlRow{.label = "Label:",
                    .labelStyle = {},
                    .control = std::move(control),
                    .controlWidth = 220,
                    .alignment = RowAlignment::Centered};
}
FormRow full(FormControl control) {
  return FullRow{.control = std::move(control)};
}

Checkbox boxOf(const std::string& title) {
  return {title, false, {}, {}};
}
/// With one item, and none shown.
Popup popupOf(const std::string& name) {
  return {{"A"}, std::nullopt, {}, {}, name};
}
PushButton buttonOf(const std::string& title, std::function<void()> action = {}) {
  return {title, std::move(action), PushButton::Bezel::Rounded, {}, true, {}};
}
CommandField commandOf(const std::string& name, const std::string& text = {}) {
  CommandField field;
  field.text = text;
  field.accessibleName = name;
  return field;
}

class SettingsWindowTest : public testing::Test {
 protected:
  SettingsWindowTest() {
    TestSession::useNoScreen();
    window_ = SettingsWindow::create({600, 520}, "Vembrix Preferences");
  }
  ~SettingsWindowTest() override { clearRetired(); }

  void show(SettingsContent content) {
    window_->setContent(std::move(content));
    window_->show();
    ASSERT_TRUE(runUntil([] { return widget().isActiveWindow(); }));
  }
  /// A themed page of these rows.
  void show(std::vector<FormRow> rows) { show(themedWith(tabOf(std::move(rows)))); }

  /// What the event loop does once the events under way are done with.
  static void clearRetired() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  static QWidget& widget() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->windowRole() == "settings") return *widget;
    }
    throw std::runtime_error("no window");
  }

  /// The only one of its kind, or the one of that accessible name.
  template <typename Control>
  static Control& control(const QString& name = {}) {
    for (auto* found : widget().findChildren<Control*>()) {
      if (name.isNull() || found->accessibleName() == name) return *found;
    }
    throw std::runtime_error("no such control");
  }

  static QString focusedName() {
    const QWidget* focused = widget().focusWidget();
    return focused ? focused->accessibleName() : QString();
  }

  static QRgb pixel(const QPoint& place) { return widget().grab().toImage().pixel(place); }

  TestSession session_;
  std::unique_ptr<SettingsWindow> window_;
};

// The window

TEST_F(SettingsWindowTest, IsNotThereBeforeItIsShown) {
  window_->setContent(themedWith(tabOf({})));
  EXPECT_FALSE(widget().isVisible());
}

TEST_F(SettingsWindowTest, HasAFixedSizeAndOnlyACloseButton) {
  show(std::vector<FormRow>{});
  EXPECT_EQ(widget().minimumSize(), QSize(600, 520));
  EXPECT_EQ(widget().maximumSize(), QSize(600, 520));
  EXPECT_EQ(widget().windowTitle(), "Vembrix Preferences");
  const Qt::WindowFlags flags = widget().windowFlags();
  EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
  EXPECT_FALSE(flags.testFlag(Qt::WindowMinimizeButtonHint));
  EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(SettingsWindowTest, EscapeAndControlWCloseIt) {
  show({full(boxOf("Box"))});
  for (const QKeyCombination keys : {QKeyCombination(Qt::Key_Escape), Qt::CTRL | Qt::Key_W}) {
    ASSERT_TRUE(widget().isVisible());
    QTest::keyClick(&widget(), keys.key(), keys.keyboardModifiers());
    EXPECT_FALSE(widget().isVisible());
    window_->show();
    ASSERT_TRUE(runUntil([] { return widget().isActiveWindow(); }));
  }
}

TEST_F(SettingsWindowTest, EscapeClosesAnOpenMenuFirst) {
  show({row(popupOf("P"))});
  control<QComboBox>("P").showPopup();
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  EXPECT_GE(menu->width(), control<QComboBox>("P").width());
  QTest::keyClick(menu->windowHandle(), Qt::Key_Escape);
  EXPECT_FALSE(menu->isVisible());
  EXPECT_TRUE(widget().isVisible());
}

TEST_F(SettingsWindowTest, FollowsTheSystemsAppearanceWhereItHasNone) {
  show(plainWith({tabOf({})}));
  EXPECT_EQ(pixel({2, 2}), qRgb(236, 236, 236));
  QPalette dark = QApplication::palette();
  dark.setColor(QPalette::Window, QColor(30, 30, 30));
  dark.setColor(QPalette::WindowText, Qt::white);
  QApplication::setPalette(dark);
  EXPECT_TRUE(runUntil([] { return pixel({2, 2}) == qRgb(50, 50, 50); }));
}

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
    // From the user; only then it goes on to who wants it.
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

/// How often the widget is painted while nobody does anything.
int paintingsAtRest(QWidget& widget) {
  class Counter : public QObject {
   public:
    bool eventFilter(QObject* /*object*/, QEvent* event) override {
      if (event->type() == QEvent::Paint) count += 1;
      return false;
    }
    int count = 0;
  };
  runFor(std::chrono::milliseconds(50));
  Counter counter;
  widget.installEventFilter(&counter);
  widget.update();
  runFor(std::chrono::milliseconds(200));
  return counter.count;
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

// Colour wells

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
  // On a screen to the left of the first one.
  EXPECT_EQ(place(middle.translated(-1440, 0), whole.translated(-1440, 0)).left(), -412);
  // Where there is room on neither side it covers the window, not the well.
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

// Tabs

TEST_F(SettingsWindowTest, PillsStandCenteredAboveThePage) {
  show(std::vector<FormRow>{});
  const auto tabs = widget().findChildren<PillTabButton*>();
  ASSERT_EQ(tabs.size(), 3);
  for (const PillTabButton* tab : tabs) {
    const int text = static_cast<int>(
        std::ceil(QFontMetricsF(tab->font()).horizontalAdvance(tab->accessibleName())));
    EXPECT_EQ(tab->y(), 38);
    EXPECT_EQ(tab->height(), 26);
    EXPECT_NEAR(tab->width(), text + 20, 4);
  }
  EXPECT_EQ(tabs[1]->x(), tabs[0]->x() + tabs[0]->width() + 4);
  EXPECT_NEAR(tabs[0]->x(), 600 - (tabs[2]->x() + tabs[2]->width()), 1);
  EXPECT_EQ(control<ThemedView>().size(), QSize(600, 548));
  EXPECT_EQ(control<QScrollArea>().geometry(), QRect(16, 78, 568, 454));
}

TEST_F(SettingsWindowTest, ASidebarStandsAtTheLeft) {
  show(themedWith(tabOf({}), sidebar()));
  const auto tabs = widget().findChildren<PillTabButton*>();
  ASSERT_EQ(tabs.size(), 3);
  EXPECT_EQ(tabs[0]->geometry(), QRect(12, 48, 128, 26));
  EXPECT_EQ(tabs[1]->geometry(), QRect(12, 76, 128, 26));
  EXPECT_EQ(control<QScrollArea>().geometry(), QRect(163, 40, 423, 494));
  EXPECT_EQ(pixel({150, 3}), qRgb(255, 0, 0));
  EXPECT_EQ(pixel({150, 519}), qRgb(255, 0, 0));
  EXPECT_EQ(pixel({149, 300}), qRgb(255, 255, 255));
  EXPECT_EQ(pixel({151, 300}), qRgb(255, 255, 255));
}

TEST_F(SettingsWindowTest, OnlyTheUnderlinedTabHasALine) {
  SettingsContent content = themedWith(tabOf({}));
  auto& buttons = std::get<ThemedContent>(content.body).page.buttons;
  buttons[1].underline = kBlue;
  show(content);
  const PillTabButton& tab = control<PillTabButton>("Two");
  const QPoint origin = tab.mapTo(&widget(), QPoint());
  const QImage image = widget().grab().toImage();
  for (const int y : {23, 24}) {
    EXPECT_EQ(image.pixel(origin + QPoint(10, y)), qRgb(0, 0, 255)) << y;
    EXPECT_EQ(image.pixel(origin + QPoint(tab.width() - 11, y)), qRgb(0, 0, 255)) << y;
    EXPECT_EQ(image.pixel(origin + QPoint(9, y)), qRgb(255, 255, 255)) << y;
    EXPECT_EQ(image.pixel(origin + QPoint(tab.width() - 10, y)), qRgb(255, 255, 255)) << y;
  }
  EXPECT_EQ(image.pixel(origin + QPoint(12, 25)), qRgb(255, 255, 255));
  const QPoint other = control<PillTabButton>("One").mapTo(&widget(), QPoint(15, 23));
  EXPECT_EQ(image.pixel(other), qRgb(255, 255, 255));
}

TEST_F(SettingsWindowTest, ACardLiesUnderThePage) {
  SettingsContent content = themedWith(tabOf({}));
  std::get<ThemedContent>(content.body).card = Card{kBlue, kRed, 10};
  show(content);
  const QRect card(16, 78 - 28, 568, 454);
  EXPECT_EQ(pixel(card.center()), qRgb(0, 0, 255));
  EXPECT_EQ(pixel({card.left(), card.center().y()}), qRgb(255, 0, 0));
  EXPECT_EQ(pixel({card.left() + 1, card.center().y()}), qRgb(0, 0, 255));
  EXPECT_EQ(pixel({card.center().x(), card.bottom()}), qRgb(255, 0, 0));
  EXPECT_EQ(pixel(card.topLeft()), qRgb(255, 255, 255));
}

TEST_F(SettingsWindowTest, AGradientRunsFromTheTopToTheBottom) {
  SettingsContent content = themedWith(tabOf({}));
  std::get<ThemedContent>(content.body).backdrop = GradientBackdrop{{kRed, kBlue}};
  show(content);
  EXPECT_GT(qRed(pixel({300, 0})), 230);
  EXPECT_GT(qBlue(pixel({300, 519})), 250);
}

TEST_F(SettingsWindowTest, AMaterialShowsItsGround) {
  SettingsContent content = themedWith(tabOf({}));
  content.chrome.background = Srgb{0, 0, 0, 0};
  std::get<ThemedContent>(content.body).backdrop = Material::Sidebar;
  show(content);
  EXPECT_EQ(pixel({5, 5}), qRgb(237, 237, 240));
}

TEST_F(SettingsWindowTest, AClickOnATabIsReportedTheSelectedOneIncluded) {
  std::vector<int> clicks;
  window_->setTabClickHandler([&](int index) { clicks.push_back(index); });
  show(std::vector<FormRow>{});
  QTest::mouseClick(&control<PillTabButton>("Three"), Qt::LeftButton);
  QTest::mouseClick(&control<PillTabButton>("One"), Qt::LeftButton);
  EXPECT_THAT(clicks, ElementsAre(2, 0));
}

TEST_F(SettingsWindowTest, ANewPageKeepsTheKeyboardOnItsTab) {
  window_->setTabClickHandler([&](int index) {
    window_->setPage({buttonsOf({"One", "Two", "Three"}, static_cast<std::size_t>(index)),
                      tabOf({full(boxOf("New"))})});
  });
  show({full(boxOf("Old"))});
  PillTabButton& second = control<PillTabButton>("Two");
  second.setFocus();
  QTest::keyClick(&second, Qt::Key_Space);
  clearRetired();
  EXPECT_TRUE(second.hasFocus());
  EXPECT_TRUE(second.isSelected());
  EXPECT_FALSE(control<PillTabButton>("One").isSelected());
  EXPECT_EQ(widget().findChildren<QCheckBox*>().size(), 1);
  EXPECT_TRUE(control<QCheckBox>("New").isVisible());
}

TEST_F(SettingsWindowTest, PlainTabsShowTheirPages) {
  SettingsTab second = tabOf({full(boxOf("Second"))});
  second.label = "Other";
  show(plainWith({tabOf({full(boxOf("First"))}), second}, 1));
  auto& tabs = control<QTabBar>();
  EXPECT_EQ(tabs.tabText(1), "Other");
  EXPECT_EQ(tabs.currentIndex(), 1);
  EXPECT_TRUE(control<QCheckBox>("Second").isVisible());
  EXPECT_EQ(widget().findChildren<QCheckBox*>().size(), 1) << "a page that nobody sees";
  QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(0).center());
  EXPECT_TRUE(control<QCheckBox>("First").isVisible());
  EXPECT_FALSE(control<QCheckBox>("Second").isVisible());
}

TEST_F(SettingsWindowTest, PlainTabsOutOfRangeShowTheFirst) {
  show(plainWith({tabOf({}), tabOf({})}, 7));
  EXPECT_EQ(control<QTabBar>().currentIndex(), 0);
}

// Content from within closures

TEST_F(SettingsWindowTest, EveryControlMayReplaceTheContent) {
  const auto replace = [this] { window_->setContent(plainWith({tabOf({})})); };
  const std::vector<FormRow> rows = {
      row(Slider{0, 1, 0.5, [=](double) { replace(); }, "S"}),
      full(Checkbox{"C", false, [=](bool) { replace(); }, {}}),
      row(Popup{{"A", "B"}, 0, [=](int, const std::string&) { replace(); }, {}, "P"}),
      full(buttonOf("B", replace)),
      full(ColorGrid{{{"W", kRed}}, [=](int, const Color&) { replace(); }, {}})};
  const std::vector<std::function<void()>> uses = {
      [] {
        QTest::mouseClick(&control<SliderControl>(), Qt::LeftButton, {}, {200, 11});
      },
      [] {
        QTest::mouseClick(&control<QCheckBox>(), Qt::LeftButton, {}, {7, 9});
      },
      [] {
        control<QComboBox>().showPopup();
        QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Return);
      },
      [] { QTest::mouseClick(&control<QPushButton>("B"), Qt::LeftButton); },
      [] {
        QTest::mouseClick(&control<ColorWell>(), Qt::LeftButton);
        control<ColorWell>().findChild<ColorDialog*>()->setCurrentColor(Qt::blue);
      }};
  window_->setTabClickHandler([=](int) { replace(); });
  for (const auto& use : uses) {
    show(rows);
    clearRetired();
    use();
    clearRetired();
    EXPECT_EQ(widget().findChildren<SliderControl*>().size(), 0);
  }
  show(rows);
  QTest::mouseClick(&control<PillTabButton>("Two"), Qt::LeftButton);
  clearRetired();
  EXPECT_EQ(widget().findChildren<PillTabButton*>().size(), 0);
}

TEST_F(SettingsWindowTest, AManifoldChangeOfContentLeavesNothingBehind) {
  for (int i = 0; i < 200; ++i) {
    show(i % 2 == 0 ? themedWith(tabOf({full(boxOf("C"))}))
                    : plainWith({tabOf({row(popupOf("P"))})}));
    clearRetired();
  }
  EXPECT_EQ(widget().findChildren<SettingsContentView*>().size(), 1);
  EXPECT_LE(QApplication::allWidgets().size(), 40);
}

TEST_F(SettingsWindowTest, OtherContentKeepsTheKeyboardOnTheSameControl) {
  const std::vector<FormRow> rows = {full(boxOf("A")), full(boxOf("B"))};
  show(rows);
  control<QCheckBox>("B").setFocus();
  show(plainWith({tabOf(rows)}));
  EXPECT_EQ(focusedName(), "B");
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
