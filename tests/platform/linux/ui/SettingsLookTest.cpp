#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFontMetricsF>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTextLayout>
#include <array>
#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>

#include "platform/Application.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/support/ContrastTable.h"
#include "platform/linux/support/TestSession.h"
#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/SettingsContentView.h"
#include "platform/linux/ui/controls/FocusRing.h"
#include "platform/linux/ui/controls/LineLabel.h"
#include "platform/linux/ui/controls/PillTabButton.h"
#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "support/Contrast.h"
#include "ui/PreferencesWindowController.h"
#include "ui/SettingsTabs.h"

namespace vembrix {

// GoogleTest's name for it. NOLINTNEXTLINE(readability-identifier-naming)
static void PrintTo(Appearance appearance, std::ostream* out) {
  *out << (appearance == Appearance::Dark ? "dark" : "light");
}

namespace {

using Case = std::tuple<std::size_t, int, Appearance>;

constexpr double kTitleBarHeight = 28;

/// Returns the name of a case, such as "PaperColorsDark".
std::string nameOf(const Case& which) {
  static constexpr std::array<const char*, 6> kTabs{"Label", "Colors",      "MenuBar",
                                                    "Theme", "Diagnostics", "About"};
  const auto& [theme, tab, appearance] = which;
  return AppTheme::all()[theme].name + kTabs.at(static_cast<std::size_t>(tab)) +
         (appearance == Appearance::Dark ? "Dark" : "Light");
}

/// Every theme with every tab, as users see them. If the environment variable VEMBRIX_PICTURES
/// names a folder, leaves pictures of all of them there.
class SettingsLookTest : public testing::TestWithParam<Case> {
 protected:
  SettingsLookTest() {
    TestSession::useNoScreen();
    Application::shared();
    EmbeddedDesktop::shared().setSpaceCount(20);
    SpaceManager::shared().reload();
    PreferencesStore::shared().setThemeName(theme().name);
    auto& controller = PreferencesWindowController::shared();
    controller.setSelectedTabIndex(tab());
    view_ = std::make_unique<SettingsContentView>(
        controller.buildContent(), kTitleBarHeight, [](int) {}, nullptr);
    view_->setSystemAppearance(appearance());
    view_->resize(600, 520);
    view_->show();
    view_->setFocus();
    QCoreApplication::processEvents();
  }

  static const AppTheme& theme() { return AppTheme::all()[std::get<0>(GetParam())]; }
  static int tab() { return std::get<1>(GetParam()); }
  static Appearance appearance() { return std::get<2>(GetParam()); }

  /// Returns the visible texts and controls.
  std::vector<QWidget*> shown() {
    std::vector<QWidget*> shown;
    for (QWidget* widget : view_->findChildren<QWidget*>()) {
      const bool counts = qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
                          qobject_cast<QSlider*>(widget) || qobject_cast<QComboBox*>(widget) ||
                          qobject_cast<QLineEdit*>(widget) || qobject_cast<QTabBar*>(widget);
      if (counts && widget->isVisible()) shown.push_back(widget);
    }
    return shown;
  }

  QRect placeOf(const QWidget& widget) {
    return {widget.mapTo(view_.get(), QPoint()), widget.size()};
  }

  static std::string textOf(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return (label ? label->text() : widget.accessibleName()).toStdString();
  }

  /// Returns the texts of a widget, each with the part of it that shows nothing else.
  static std::vector<std::pair<QString, QRect>> textsOf(const QWidget& widget) {
    const QRect whole = widget.rect();
    const QString name = QString::fromStdString(textOf(widget));
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
      std::vector<std::pair<QString, QRect>> texts;
      texts.reserve(static_cast<std::size_t>(tabs->count()));
      for (int i = 0; i < tabs->count(); ++i) {
        texts.emplace_back(tabs->tabText(i), tabs->tabRect(i).adjusted(4, 4, -4, -4));
      }
      return texts;
    }
    if (const auto* popup = qobject_cast<const QComboBox*>(&widget)) {
      return {{popup->currentText(), whole.adjusted(9, 3, -24, -3)}};
    }
    if (qobject_cast<const QCheckBox*>(&widget)) return {{name, whole.adjusted(20, 0, 0, 0)}};
    if (qobject_cast<const ColorWell*>(&widget) || qobject_cast<const QSlider*>(&widget)) return {};
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
      return {{line->text(), whole.adjusted(4, 3, -4, -3)}};
    }
    const auto* button = qobject_cast<const QPushButton*>(&widget);
    if (button && !button->isFlat()) return {{name, whole.adjusted(6, 3, -6, -3)}};
    if (name.isEmpty()) return {};
    return {{name, whole}};
  }

  /// Returns the size of the line that the widget shows.
  static QSizeF lineOf(const QString& text, const QWidget& widget) {
    QTextLayout layout(text, widget.font());
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return {line.naturalTextWidth(), line.ascent() + line.descent()};
  }

  /// Measures the text independently of the widget.
  static void expectRoomForText(const QWidget& widget) {
    QString text = QString::fromStdString(textOf(widget));
    QSizeF room = widget.size();
    bool mayWrap = false;
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
      mayWrap = label->wordWrap();
    } else if (const auto* popup = qobject_cast<const QComboBox*>(&widget)) {
      QStyleOptionComboBox option;
      option.initFrom(popup);
      room.setWidth(
          popup->style()
              ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, popup)
              .width());
      text = popup->currentText();
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
      mayWrap = qobject_cast<const QCheckBox*>(button) != nullptr;
      // Colour wells show no text.
      if (qobject_cast<const ColorWell*>(button)) text.clear();
    } else {
      return;
    }
    if (text.isEmpty()) return;
    const QSizeF line = lineOf(text, widget);
    EXPECT_GE(room.height(), line.height()) << text.toStdString();
    if (!mayWrap) {
      EXPECT_GE(room.width(), line.width()) << text.toStdString();
    }
  }

  TestSession session_;
  std::unique_ptr<SettingsContentView> view_;
};

TEST_P(SettingsLookTest, NothingOverlaps) {
  const auto widgets = shown();
  ASSERT_GT(widgets.size(), 4U);
  for (std::size_t i = 0; i < widgets.size(); ++i) {
    for (std::size_t j = i + 1; j < widgets.size(); ++j) {
      // A scrolled page may be covered only by its own edge.
      const bool areOfOnePage = widgets[i]->parentWidget() == widgets[j]->parentWidget();
      if (!areOfOnePage) continue;
      EXPECT_FALSE(placeOf(*widgets[i]).intersects(placeOf(*widgets[j])))
          << textOf(*widgets[i]) << " / " << textOf(*widgets[j]);
    }
  }
}

TEST_P(SettingsLookTest, NothingIsCutOff) {
  for (const QWidget* widget : shown()) {
    const auto* field = qobject_cast<const QLineEdit*>(widget);
    const bool mayBeCutOff = field && field->hasFrame();
    const QSize needed = widget->hasHeightForWidth()
                             ? QSize(0, widget->heightForWidth(widget->width()))
                             : widget->sizeHint();
    EXPECT_GE(widget->height(), needed.height()) << textOf(*widget);
    if (!mayBeCutOff) {
      EXPECT_GE(widget->width(), needed.width()) << textOf(*widget);
    }
    const QRect page(QPoint(), widget->parentWidget()->size());
    EXPECT_TRUE(page.contains(widget->geometry())) << textOf(*widget);
    expectRoomForText(*widget);
  }
}

TEST_P(SettingsLookTest, NoFocusRingIsCutOff) {
  for (QWidget* widget : shown()) {
    if (widget->focusPolicy() == Qt::NoFocus) continue;
    widget->setFocus();
    ASSERT_TRUE(widget->hasFocus()) << textOf(*widget);
    for (const FocusRing* ring : view_->findChildren<FocusRing*>()) {
      if (!ring->isVisible()) continue;
      EXPECT_TRUE(ring->parentWidget()->rect().contains(ring->geometry())) << textOf(*widget);
    }
  }
}

TEST_P(SettingsLookTest, TheRowsOfTheAboutPageStepEvenly) {
  constexpr int kAbout = 5;
  if (tab() != kAbout) return;
  std::vector<int> baselines;
  for (QWidget* widget : shown()) {
    const auto* label = qobject_cast<LineLabel*>(widget);
    if (label && label->text().endsWith(':')) {
      baselines.push_back(placeOf(*label).top() + label->baseline());
    }
  }
  ASSERT_EQ(baselines.size(), 3U);
  EXPECT_EQ(baselines[1] - baselines[0], baselines[2] - baselines[1]);
}

TEST_P(SettingsLookTest, OnlyManyDesktopsScroll) {
  for (const QScrollArea* area : view_->findChildren<QScrollArea*>()) {
    if (!area->isVisible()) continue;
    EXPECT_EQ(area->verticalScrollBar()->isVisible(), tab() == 1);
    EXPECT_FALSE(area->horizontalScrollBar()->isVisible());
  }
}

TEST_P(SettingsLookTest, EveryTextIsLegibleAsItIsDrawn) {
  constexpr int kScale = 2;
  QImage image(view_->size() * kScale, QImage::Format_RGB32);
  image.setDevicePixelRatio(kScale);
  view_->render(&image);
  int count = 0;
  for (const QWidget* widget : shown()) {
    for (const auto& [text, part] : textsOf(*widget)) {
      const QRect place = part.translated(widget->mapTo(view_.get(), QPoint())) & view_->rect();
      // Not visible, because the page is scrolled.
      if (widget->visibleRegion().isEmpty() || place.isEmpty()) continue;
      const double found =
          contrastIn(image.copy(QRect(place.topLeft() * kScale, place.size() * kScale)));
      noteContrast(nameOf(GetParam()), text.toStdString(), found);
      count += 1;
      const auto* tab = qobject_cast<const PillTabButton*>(widget);
      // The accent is chosen by the theme.
      if (!tab || !tab->isSelected()) {
        EXPECT_GE(found, kLegible) << text.toStdString();
      }
    }
  }
  EXPECT_GT(count, 8);
}

TEST_P(SettingsLookTest, IsDrawnAtEveryScale) {
  const QString folder = qEnvironmentVariable("VEMBRIX_PICTURES");
  for (const int scale : {1, 2}) {
    QImage image(view_->size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    view_->render(&image);
    EXPECT_NE(image.pixel(0, 0), QColor(Qt::magenta).rgb());
    EXPECT_NE(image.pixel(image.width() - 1, image.height() - 1), QColor(Qt::magenta).rgb());
    if (folder.isEmpty()) continue;
    const QString name = QStringLiteral("%1-%2@%3.png")
                             .arg(nameOf(GetParam()).c_str(), TestSession::fonts().c_str())
                             .arg(scale);
    EXPECT_TRUE(image.save(QDir(folder).filePath(name)));
  }
}

INSTANTIATE_TEST_SUITE_P(AllThemes, SettingsLookTest,
                         testing::Combine(testing::Range<std::size_t>(0, 7), testing::Range(0, 6),
                                          testing::Values(Appearance::Light, Appearance::Dark)),
                         [](const auto& info) { return nameOf(info.param); });

}  // namespace
}  // namespace vembrix
