#include "platform/PreviewCanvas.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/ThemePreviewRenderer.h"
#include "menubar/SpaceRow.h"
#include "platform/Application.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/support/TestSession.h"
#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/PreferencesWindowController.h"

namespace vembrix {
namespace {

constexpr Srgb kRed{1, 0, 0};

/// The first and last row and column of pixels that differ from the background.
struct Extent {
  int left = 0;
  int top = 0;
  int right = -1;
  int bottom = -1;
};

class PreviewCanvasTest : public testing::Test {
 protected:
  PreviewCanvasTest() {
    TestSession::useNoScreen();
    Application::shared();
    SpaceManager::shared().reload();
  }

  static QImage decoded(const std::optional<std::string>& png) {
    if (!png) return {};
    return QImage::fromData(reinterpret_cast<const uchar*>(png->data()),
                            static_cast<int>(png->size()), "PNG");
  }
  static QImage draw(MenuMock mock) {
    return decoded(PreviewCanvas::shared().draw(std::move(mock)));
  }

  /// Returns an empty mock of 240 × 148 points.
  static MenuMock emptyMock() {
    MenuMock mock;
    mock.size = {240, 148};
    mock.background = {0.95, 0.95, 0.95};
    mock.cornerRadius = 8;
    return mock;
  }
  static MenuMock::Row rowAt(double y) {
    return {SpaceRow::create(
                {.displayName = "Mail", .isActive = true, .dotColor = kRed, .heatGlow = {}}, {}),
            {0, y, 240, 24}};
  }
  static MenuMock::Label labelAt(double y, Font::Design design, const Srgb& color) {
    return {{14, y, 200, 18},
            "HHH",
            {.design = design, .weight = Font::Weight::Regular, .size = {}},
            color};
  }
  /// Returns the mock of a theme with the present desktops.
  static QImage mockOf(const char* theme) {
    PreferencesStore::shared().setThemeName(theme);
    return draw(*ThemePreviewRenderer::renderMenuMock(PreferencesStore::shared().theme()));
  }
  static QImage settingsOf(const char* theme, int tab = 0) {
    PreferencesStore::shared().setThemeName(theme);
    PreferencesWindowController::shared().setSelectedTabIndex(tab);
    return decoded(
        PreviewCanvas::shared().draw(PreferencesWindowController::shared().buildContent()));
  }

  static Extent extentOf(const QImage& picture, const QRect& area) {
    const QRgb ground = picture.pixel(area.topLeft());
    Extent extent{.left = area.right(), .top = area.bottom(), .right = -1, .bottom = -1};
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) {
        if (picture.pixel(x, y) == ground) continue;
        extent.left = std::min(extent.left, x);
        extent.right = std::max(extent.right, x);
        extent.top = std::min(extent.top, y);
        extent.bottom = std::max(extent.bottom, y);
      }
    }
    return extent;
  }
  /// Returns the largest difference of a component.
  static int distance(QRgb a, const QColor& b) {
    return std::max({std::abs(qRed(a) - b.red()), std::abs(qGreen(a) - b.green()),
                     std::abs(qBlue(a) - b.blue())});
  }
  /// Returns the smallest distance of a pixel of the area from the colour.
  static int nearest(const QImage& picture, const QRect& area, const QColor& color) {
    int least = 255;
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) {
        least = std::min(least, distance(picture.pixel(x, y), color));
      }
    }
    return least;
  }

  TestSession session_;
};

// The dropdown

TEST_F(PreviewCanvasTest, TheMenuHasRoundCornersWithNothingAround) {
  const QImage picture = draw(emptyMock());
  ASSERT_EQ(picture.size(), QSize(240, 148));
  for (const QPoint corner : {QPoint(0, 0), {239, 0}, {0, 147}, {239, 147}}) {
    EXPECT_EQ(qAlpha(picture.pixel(corner)), 0);
  }
  EXPECT_EQ(picture.pixel(8, 0), qRgb(242, 242, 242));
  EXPECT_EQ(picture.pixel(0, 8), qRgb(242, 242, 242));
  EXPECT_EQ(picture.pixel(3, 3), qRgb(242, 242, 242));
}

TEST_F(PreviewCanvasTest, RowsStandAtTheirFramesCountedFromBelow) {
  for (const double y : {118.0, 70.0}) {
    MenuMock mock = emptyMock();
    mock.rows.push_back(rowAt(y));
    const QImage picture = draw(std::move(mock));
    const int top = 148 - static_cast<int>(y) - 24;
    // A disc of 14 points, 14 points from the leading edge.
    EXPECT_EQ(picture.pixel(21, top + 12), qRgb(255, 0, 0));
    const Extent disc = extentOf(picture, {8, 9, 24, 130});
    EXPECT_EQ(disc.left, 14);
    EXPECT_EQ(disc.right, 27);
    EXPECT_EQ(disc.top, top + 5);
    EXPECT_EQ(disc.bottom, top + 18);
    const Extent name = extentOf(picture, {36, 9, 180, 130});
    EXPECT_GE(name.left, 38);
    EXPECT_GT(name.top, top);
    EXPECT_LT(name.bottom, top + 24);
  }
}

TEST_F(PreviewCanvasTest, SeparatorsAreTranslucentLinesOverTheGround) {
  MenuMock mock = emptyMock();
  mock.separators.push_back({{12, 63, 216, 1}, {0, 0, 0, 0.15}});
  const QImage picture = draw(std::move(mock));
  const Extent line = extentOf(picture, {2, 10, 236, 128});
  EXPECT_EQ(line.left, 12);
  EXPECT_EQ(line.right, 227);
  EXPECT_EQ(line.top, 148 - 64);
  EXPECT_EQ(line.bottom, line.top);
  EXPECT_LE(distance(picture.pixel(100, line.top), QColor::fromRgbF(0.8075F, 0.8075F, 0.8075F)), 1);
}

TEST_F(PreviewCanvasTest, LabelsAreInTheirColorWithinTheirFrames) {
  MenuMock mock = emptyMock();
  mock.labels.push_back(labelAt(38, Font::Design::System, kRed));
  const QImage picture = draw(std::move(mock));
  const Extent ink = extentOf(picture, {2, 10, 236, 128});
  EXPECT_GE(ink.left, 14);
  EXPECT_LE(ink.right, 60);
  EXPECT_GE(ink.top, 148 - 56);
  EXPECT_LT(ink.bottom, 148 - 38);
  EXPECT_LE(nearest(picture, {14, 92, 60, 18}, Qt::red), 4);
}

TEST_F(PreviewCanvasTest, LabelsStandOnTheSameLineInEveryFont) {
  std::vector<int> baselines;
  for (const auto design : {Font::Design::System, Font::Design::Monospaced}) {
    MenuMock mock = emptyMock();
    mock.labels.push_back(labelAt(38, design, kBlack));
    baselines.push_back(extentOf(draw(std::move(mock)), {2, 10, 236, 128}).bottom);
  }
  EXPECT_EQ(baselines[0], baselines[1]);
  // The last row of pixels above the baseline.
  EXPECT_EQ(baselines[0], 148 - 56 + 13 - 1);
}

TEST_F(PreviewCanvasTest, NamesStandInTheMiddleOfTheirDotsInEveryFont) {
  for (const char* theme : {"Alpine", "Paper"}) {
    const QImage picture = mockOf(theme);
    // The "D" of the first row's name, beside its dot.
    const Extent capital = extentOf(picture, {36, 7, 10, 22});
    const double middle = (capital.top + capital.bottom + 1) / 2.0;
    EXPECT_NEAR(middle, 6 + 12, 0.75) << theme;
  }
}

TEST_F(PreviewCanvasTest, TheMenuIsLightOrDarkWithTheTheme) {
  const QImage light = mockOf("Alpine");
  const QImage dark = mockOf("Graphite");
  ASSERT_EQ(light.size(), QSize(240, 172));
  ASSERT_EQ(dark.size(), QSize(240, 172));
  EXPECT_LE(distance(light.pixel(230, 12), QColor::fromRgbF(0.95F, 0.95F, 0.95F)), 1);
  EXPECT_LE(distance(dark.pixel(230, 12), QColor::fromRgbF(0.17F, 0.17F, 0.18F)), 1);
  // The area of the commands.
  const QRect commands(14, 112, 150, 54);
  EXPECT_LE(nearest(light, commands, Qt::black), 24);
  EXPECT_LE(nearest(dark, commands, Qt::white), 24);
  // The area of the names, which are in the system's label colour.
  const QRect names(38, 30, 100, 72);
  EXPECT_LE(nearest(light, names, QColor(36, 36, 36)), 24);
  EXPECT_LE(nearest(dark, names, QColor(223, 223, 223)), 24);
}

TEST_F(PreviewCanvasTest, AThemeThatForcesNothingIsAsTheSystemIs) {
  EmbeddedDesktop::shared().setAppearance(Appearance::Light);
  EXPECT_GT(qRed(mockOf("Stock").pixel(230, 12)), 200);
  EXPECT_GT(qRed(settingsOf("Frost").pixel(4, 4)), 200);
}

// The settings

TEST_F(PreviewCanvasTest, TheSettingsAreDrawnWhole) {
  EXPECT_EQ(settingsOf("Stock").size(), QSize(600, 520));
  for (const AppTheme& theme : AppTheme::all()) {
    if (theme.name == "Stock") continue;
    const QImage picture = settingsOf(theme.name.c_str());
    EXPECT_EQ(picture.size(), QSize(600, 548)) << theme.name;
    for (const QPoint corner : {QPoint(0, 0), {599, 0}, {0, 547}, {599, 547}}) {
      EXPECT_EQ(qAlpha(picture.pixel(corner)), 255) << theme.name;
    }
  }
}

TEST_F(PreviewCanvasTest, TheSettingsStandOnTheGroundOfTheirTheme) {
  EXPECT_LE(distance(settingsOf("Alpine").pixel(4, 4), QColor::fromRgbF(0.96F, 0.965F, 0.973F)), 1);
  EXPECT_LE(distance(settingsOf("Graphite").pixel(4, 4), QColor::fromRgbF(0.055F, 0.055F, 0.07F)),
            1);
  const QImage sorbet = settingsOf("Sorbet");
  EXPECT_LE(distance(sorbet.pixel(4, 0), QColor::fromRgbF(0.93F, 0.89F, 1.0F)), 1);
  EXPECT_LE(distance(sorbet.pixel(4, 547), QColor::fromRgbF(1.0F, 0.91F, 0.88F)), 1);
}

TEST_F(PreviewCanvasTest, TheSameContentGivesTheSameBytes) {
  PreferencesStore::shared().setThemeName("Sorbet");
  auto& controller = PreferencesWindowController::shared();
  const auto first = PreviewCanvas::shared().draw(controller.buildContent());
  const auto second = PreviewCanvas::shared().draw(controller.buildContent());
  ASSERT_TRUE(first);
  EXPECT_EQ(first, second);
}

}  // namespace
}  // namespace vembrix
