#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "labels/SignAppearance.h"
#include "menubar/DropdownContent.h"
#include "menubar/SpaceRow.h"
#include "platform/Application.h"
#include "platform/SignWindow.h"
#include "platform/StatusItem.h"
#include "platform/TextSize.h"
#include "platform/TourOverlay.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/labels/BareWindow.h"
#include "platform/linux/labels/PanelStage.h"
#include "platform/linux/menubar/RowEditField.h"
#include "platform/linux/support/ContrastTable.h"
#include "platform/linux/support/DropdownUser.h"
#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
#include "support/Contrast.h"

namespace vembrix {
namespace {

// Names with the highest and the lowest Latin letters.
constexpr const char* kTallName = "Ålgjpqy";

/// Returns the rectangle, in pixels, around everything that differs from the background.
QRect inkOf(const QImage& image) {
  const QColor ground = image.pixelColor(0, 0);
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, y);
      const int distance = std::abs(color.red() - ground.red()) +
                           std::abs(color.green() - ground.green()) +
                           std::abs(color.blue() - ground.blue());
      if (distance > 150) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

/// Returns the size of the whole text, in pixels.
QSize freeInkOf(const QString& text, const QFont& font) {
  const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
  const QFontMetricsF metrics(font);
  QImage image(QSizeF((metrics.horizontalAdvance(text) + 100) * scale, 3 * metrics.height() * scale)
                   .toSize(),
               QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setFont(font);
  painter.drawText(QPointF(50, 2 * metrics.height()), text);
  painter.end();
  return inkOf(image).size();
}

/// Returns a part of the widget as it is drawn, in points.
QImage partOf(QWidget& widget, const QRect& part) {
  return widget.grab(part).toImage();
}

/// Expects the whole text. The edges of letters may be a pixel fainter.
void expectWhole(const QRect& ink, const QString& text, const QFont& font) {
  const QSize needed = freeInkOf(text, font);
  EXPECT_GE(ink.height(), needed.height() - 1) << text.toStdString();
  EXPECT_GE(ink.width(), needed.width() - 2) << text.toStdString();
}

/// The faces with the fonts and at the scale of VEMBRIX_FONTS and VEMBRIX_SCALE.
class FacesLookTest : public testing::Test {
 protected:
  FacesLookTest() { TestSession::useNoScreen(); }

  static QWidget& windowOfRole(const QString& role) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->windowRole() == role) return *widget;
    }
    throw std::runtime_error("no window of that role");
  }

  /// Returns the content of a label or an overlay without `outside` points at each edge.
  static QImage panelOfRole(const QString& role, double outside) {
    for (const BareWindow* panel : PanelStage::shared().panels()) {
      if (panel->role() != role) continue;
      const QRectF part = panel->bounds().adjusted(outside, outside, -outside, -outside);
      const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
      return panel->picture(scale, Backing::Translucent, part);
    }
    throw std::runtime_error("no panel of that role");
  }

  TestSession session_;
};

TEST_F(FacesLookTest, TheFontsAreThoseOfTheSet) {
  Application::shared();
  const std::map<std::string, std::pair<QString, QString>> families{
      {"installed", {"Inter", "DejaVu Sans Mono"}},
      {"dejavu", {"DejaVu Sans", "DejaVu Sans Mono"}},
      {"noto", {"Noto Sans", "Noto Sans Mono"}},
      {"inter", {"Inter", "JetBrains Mono"}},
  };
  const auto& [system, monospaced] = families.at(TestSession::fonts());
  EXPECT_EQ(QFontInfo(menuBarFont()).family(), system);
  EXPECT_EQ(QFontInfo(nativeFont({})).family(), system);
  EXPECT_EQ(QFontInfo(nativeFont({.design = Font::Design::Monospaced, .size = {}})).family(),
            monospaced);
}

TEST_F(FacesLookTest, AStripShowsTheWholeOfItsTitle) {
  const auto item = StatusItem::create();
  StatusItemContent content;
  content.label = StatusItemContent::AttributedTitle{kTallName, kBlack};
  content.fill = kWhite;
  item->setContent(content);
  QWidget& strip = windowOfRole("status-item");
  const QRect inside = strip.rect().adjusted(4, 1, -4, -1);
  expectWhole(inkOf(partOf(strip, inside)), kTallName, menuBarFont());
}

TEST_F(FacesLookTest, ALabelShowsTheWholeOfItsText) {
  for (const double size : {24.0, 96.0, 300.0}) {
    const Font font = signFont(size);
    const Size text = textSize(kTallName, font);
    // The product's margin around the measured text.
    const auto label = SignWindow::create(
        {.frame = {0, 0, text.width + 160, text.height + 120}, .cornerRadius = 40, .padding = 40});
    label->view().setFont(font);
    label->view().setText(kTallName);
    label->view().setLook({.fill = kWhite, .textColor = kBlack, .rim = kWhite});
    // The area inside the shadow and the round corners.
    expectWhole(inkOf(panelOfRole("label", 24 + 40)), kTallName, nativeFont(font));
  }
}

TEST_F(FacesLookTest, TheOverlayShowsTheWholeOfItsText) {
  const QString text = "Initializing desktops, stand by";
  const Font font{.weight = Font::Weight::Semibold, .size = 22};
  const auto overlay = TourOverlay::create({.frame = {100, 200, 520, 96},
                                            .fill = {0, 0, 0, 1},
                                            .cornerRadius = 0,
                                            .spinnerSize = 0,
                                            .text = text.toStdString(),
                                            .font = font,
                                            .textColor = kWhite,
                                            .spacing = 24 + 16,
                                            .padding = 28});
  // The area inside the shadow.
  expectWhole(inkOf(panelOfRole("tour-overlay", 24)), text, nativeFont(font));
}

/// The dropdown in every theme.
class DropdownLookTest : public testing::TestWithParam<std::size_t> {
 protected:
  DropdownLookTest() {
    Application::shared();
    PreferencesStore::shared().setThemeName(theme().name);
  }

  static const AppTheme& theme() { return AppTheme::all()[GetParam()]; }

  static std::unique_ptr<SpaceRowView> rowOf(const std::string& name, bool isActive) {
    return SpaceRow::create(
        {.displayName = name, .isActive = isActive, .dotColor = kBlack, .heatGlow = {}},
        {.onSwitch = [] {}, .onCommitRename = [](std::string_view) {}});
  }

  /// Returns the rectangle of the row's name.
  static QRect inkOfName(VembrixSpaceRowView& row) {
    constexpr int kNameLeft = 36;
    return inkOf(partOf(row, row.rect().adjusted(kNameLeft, 0, -40, 0)));
  }

  DropdownUser user_;
};

TEST_P(DropdownLookTest, ARowShowsTheWholeOfItsName) {
  for (const bool isActive : {false, true}) {
    std::vector<MenuItem> items;
    items.emplace_back(rowOf(kTallName, isActive));
    user_.open(std::move(items));
    VembrixSpaceRowView& row = user_.row(0);
    expectWhole(inkOfName(row), kTallName, row.font());
    EXPECT_GE(row.editField().height(), lineHeight(row.font()));
  }
}

TEST_P(DropdownLookTest, ANameStandsOnItsBaselineWhateverElseIsInIt) {
  std::vector<MenuItem> items;
  for (const char* name : {"HI", "HI      🚀", "HI      ไม้", "HI      مك"}) {
    items.emplace_back(rowOf(name, false));
  }
  user_.open(std::move(items));
  const auto placeOf = [&](std::size_t index) {
    VembrixSpaceRowView& row = user_.row(index);
    return inkOf(partOf(row, QRect(36, 0, 18, row.height())));
  };
  for (std::size_t i = 1; i < 4; ++i) {
    EXPECT_EQ(placeOf(i).bottom(), placeOf(0).bottom()) << "row " << i;
    EXPECT_EQ(placeOf(i).top(), placeOf(0).top()) << "row " << i;
  }
}

TEST_P(DropdownLookTest, EveryTextIsLegibleAsItIsDrawn) {
  std::vector<MenuItem> items = makeDropdownItems([] {});
  items.insert(items.begin(), rowOf("Mail", true));
  user_.open(std::move(items));
  const auto check = [&](const std::string& text, const QRect& place) {
    const double found = contrastIn(partOf(user_.widget(), place));
    noteContrast(theme().name + " dropdown", text, found);
    EXPECT_GE(found, kLegible) << text;
  };
  for (QAction* action : user_.widget().actions()) {
    if (action->isSeparator()) continue;
    const QRect place = user_.widget().actionGeometry(action);
    for (const bool isSelected : {false, true}) {
      user_.widget().setActiveAction(isSelected ? action : nullptr);
      std::string title = action->text().toStdString();
      if (isSelected) title += ", selected";
      // Stock keeps the system's selection, whose text is white on the accent.
      const bool isSystems = isSelected && theme().name == "Stock" && !action->shortcut().isEmpty();
      if (isSystems) continue;
      check(title, place.adjusted(38, 3, -90, -3));
      if (!action->shortcut().isEmpty()) {
        check("keys of " + title, place.adjusted(place.width() - 60, 3, -12, -3));
      }
    }
  }
}

TEST_P(DropdownLookTest, ALongNameHasItsEllipsisWhereItsScriptEnds) {
  std::vector<MenuItem> items;
  for (const QString& letter : {QStringLiteral("H"), QStringLiteral("\u05d0")}) {
    items.emplace_back(rowOf(letter.repeated(60).toStdString(), false));
  }
  user_.open(std::move(items));
  const auto heightAt = [&](std::size_t index, bool atRight) {
    VembrixSpaceRowView& row = user_.row(index);
    const QRect name(36, 0, row.width() - 36 - 40, row.height());
    const QImage image = partOf(row, name);
    const QRect ink = inkOf(image);
    const int part = 6 * image.height() / row.height();
    const int left = atRight ? ink.right() + 1 - part : ink.left();
    // Includes some of the background on the left.
    QImage end = image.copy(left, 0, part, image.height());
    end.setPixelColor(0, 0, image.pixelColor(0, 0));
    return inkOf(end).height() * row.height() / image.height();
  };
  for (const bool atRight : {false, true}) {
    EXPECT_EQ(heightAt(0, atRight) < 5, atRight);
    EXPECT_EQ(heightAt(1, atRight) < 5, !atRight);
  }
}

TEST_P(DropdownLookTest, SeparatorsAreAsManyWholePixelsAsAPointHas) {
  std::vector<MenuItem> items = makeDropdownItems([] {});
  // Qt hides a separator that is the first item.
  items.insert(items.begin(), rowOf("Mail", false));
  user_.open(std::move(items));
  const QImage image = partOf(user_.widget(), user_.widget().rect());
  const double scale = image.devicePixelRatioF();
  const int column = image.width() / 2;
  int separators = 0;
  for (QAction* action : user_.widget().actions()) {
    if (!action->isSeparator()) continue;
    const QRect place = user_.widget().actionGeometry(action);
    std::vector<QRgb> line;
    // A pixel between the edge and the separator.
    const QRgb ground =
        image.pixel(static_cast<int>(4 * scale), static_cast<int>(place.center().y() * scale));
    const int bottom = static_cast<int>((place.bottom() + 1) * scale);
    for (int y = static_cast<int>(place.top() * scale) + 1; y < bottom; ++y) {
      if (image.pixel(column, y) != ground) line.push_back(image.pixel(column, y));
    }
    ASSERT_FALSE(line.empty());
    EXPECT_EQ(line, std::vector(static_cast<std::size_t>(scale), line.front()));
    separators += 1;
  }
  EXPECT_EQ(separators, 2);
}

TEST_P(DropdownLookTest, ACommandShowsTheWholeOfItsTitleAndKeys) {
  std::vector<MenuItem> items = makeDropdownItems([] {});
  user_.open(std::move(items));
  int commands = 0;
  for (QAction* action : user_.widget().actions()) {
    if (action->shortcut().isEmpty()) continue;
    commands += 1;
    const QRect place = user_.widget().actionGeometry(action);
    const QFont font = action->font();
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    const QFontMetricsF metrics(font);
    constexpr int kInset = 12;
    const int keysLeft =
        place.right() - kInset - static_cast<int>(std::ceil(metrics.horizontalAdvance(keys))) - 4;
    const QRect title(place.left() + kInset, place.top(), keysLeft - place.left() - kInset,
                      place.height());
    expectWhole(inkOf(partOf(user_.widget(), title)), action->text(), font);
  }
  EXPECT_EQ(commands, 2);
}

INSTANTIATE_TEST_SUITE_P(AllThemes, DropdownLookTest, testing::Range<std::size_t>(0, 7));

}  // namespace
}  // namespace vembrix
