#include "platform/linux/ui/SettingsWindowTest.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QWidget>
#include <QWindow>
#include <QtTest/QTest>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "platform/Application.h"
#include "platform/SettingsWindow.h"
#include "platform/linux/support/TestSession.h"
#include "platform/linux/ui/ColorDialog.h"
#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/SettingsContentView.h"
#include "platform/linux/ui/ThemedView.h"
#include "platform/linux/ui/controls/PillTabButton.h"
#include "platform/linux/ui/controls/SliderControl.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

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

}  // namespace
}  // namespace vembrix
