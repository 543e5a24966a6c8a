#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "platform/StatusItem.h"
#include "platform/linux/menubar/StatusItemTest.h"
#include "platform/linux/menubar/strip/StatusItemLabel.h"

namespace vembrix {
namespace {

using Content = StatusItemContent;
using testing::ElementsAre;

// What it looks like

/// The lengths of the runs of equal pixels along a line.
std::vector<int> runsOf(const QImage& image, QPoint place, const QPoint& step) {
  std::vector<int> runs;
  for (QRgb last = 0; image.valid(place); place += step) {
    const QRgb pixel = image.pixel(place);
    if (runs.empty() || pixel != last) runs.push_back(0);
    runs.back() += 1;
    last = pixel;
  }
  return runs;
}

TEST_F(StatusItemTest, TheBarFramesTheFillEvenly) {
  const QImage image = show(filled(""));
  ASSERT_EQ(image.size(), QSize(10, 24));
  EXPECT_EQ(image.pixel(0, 12), kLightBar);
  EXPECT_EQ(image.pixel(5, 12), rgbOf(kPink));
  EXPECT_THAT(runsOf(image, {0, 12}, {1, 0}), ElementsAre(1, 8, 1));
  EXPECT_THAT(runsOf(image, {5, 0}, {0, 1}), ElementsAre(1, 22, 1));
}

TEST_F(StatusItemTest, TheFillsEdgesAreSharpAndItsFrameIsEvenAtEveryScale) {
  StatusItemLabel label;
  label.setContent(filled(""));
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    const int across = static_cast<int>(std::lround(label.width() * scale));
    const int down = static_cast<int>(std::lround(StatusItemLabel::kBarHeight * scale));
    QImage image(across, down, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(kLightBar);
    QPainter painter(&image);
    label.paint(painter, Appearance::Light);
    painter.end();
    const int rim = static_cast<int>(scale);
    EXPECT_THAT(runsOf(image, {0, down / 2}, {1, 0}), ElementsAre(rim, across - 2 * rim, rim))
        << scale;
    EXPECT_THAT(runsOf(image, {across / 2, 0}, {0, 1}), ElementsAre(rim, down - 2 * rim, rim))
        << scale;
  }
}

TEST_F(StatusItemTest, TheFillsCornersAreRound) {
  const QImage image = show(filled(" Desktop 1 "));
  for (const int x : {1, image.width() - 2}) {
    for (const int y : {1, 22}) {
      EXPECT_GT(distance(image.pixel(x, y), rgbOf(kPink)), 10) << x << " " << y;
    }
  }
  // Three points further, the edge is straight.
  EXPECT_EQ(image.pixel(1, 5), rgbOf(kPink));
  EXPECT_EQ(image.pixel(4, 1), rgbOf(kPink));
}

TEST_F(StatusItemTest, WithoutARadiusTheCornersAreSquare) {
  Content content = filled(" Desktop 1 ");
  content.cornerRadius = 0;
  EXPECT_EQ(show(content).pixel(1, 1), rgbOf(kPink));
}

TEST_F(StatusItemTest, TheTitleIsInItsOwnColor) {
  EXPECT_GT(count(show(filled(" Desktop 1 ")), qRgb(0, 0, 0)), 10);
  Content red = plain("");
  red.label = Content::AttributedTitle{" Desktop 1 ", Srgb{0.8, 0, 0}};
  const QImage image = show(red);
  EXPECT_GT(count(image, qRgb(204, 0, 0)), 10);
  EXPECT_EQ(image.pixel(0, 12), kLightBar);
}

TEST_F(StatusItemTest, APlainTitleIsInTheMenuBarsColor) {
  const QImage image = show(plain("Desktops"));
  // Black at 85 % over the bar.
  EXPECT_GT(count(image, qRgb(37, 37, 37)), 10);
  EXPECT_EQ(count(image, qRgb(0, 0, 0)), 0);
}

TEST_F(StatusItemTest, TheBarFollowsTheSystemsAppearance) {
  show(plain("Desktops"));
  useDarkWidgets();
  const QImage image = picture();
  EXPECT_EQ(image.pixel(1, 1), kDarkBar);
  EXPECT_GT(count(image, qRgb(223, 223, 223), 3), 10);
}

TEST_F(StatusItemTest, SystemColorsFollowTheSystemsAppearance) {
  Content content = filled(" Desktop 1 ");
  content.fill = Color(SystemColor::ControlAccent);
  EXPECT_EQ(show(content).pixel(3, 12), qRgb(0, 122, 255));
  useDarkWidgets();
  EXPECT_EQ(picture().pixel(3, 12), qRgb(10, 132, 255));
}

TEST_F(StatusItemTest, ColorsOutsideOfTheirRangeAreTheNearest) {
  EXPECT_EQ(show(filled(" x ", {2.0, -1.0, 1.0})).pixel(1, 12), qRgb(255, 0, 255));
}

TEST_F(StatusItemTest, CapitalsStandInTheMiddleOfTheBar) {
  const QImage image = show(filled("HHH"));
  int top = 24;
  int bottom = 0;
  for (int y = 0; y < 24; ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (distance(image.pixel(x, y), qRgb(0, 0, 0)) > 60) continue;
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  EXPECT_NEAR(top, 23 - bottom, 1);
  EXPECT_NEAR(bottom - top + 1, 9, 1);
}

TEST_F(StatusItemTest, ATemplateImageIsDrawnInTheMiddleInTheMenuBarsColor) {
  const QImage image = show(icon());
  const QRgb ink = qRgb(37, 37, 37);
  // Its origin is at the bottom left.
  EXPECT_EQ(image.pixel(4, 19), ink);
  EXPECT_EQ(image.pixel(11, 12), ink);
  EXPECT_EQ(image.pixel(12, 19), kLightBar);
  EXPECT_EQ(image.pixel(4, 11), kLightBar);
  EXPECT_EQ(image.pixel(4, 20), kLightBar);
  EXPECT_EQ(image.pixel(3, 19), kLightBar);
}

TEST_F(StatusItemTest, DrawsNamesOfAllScripts) {
  for (const char* name : {" שולחן עבודה ", " العمل ", " 日本語 ", " Ää é̂ ", " \t ", "  "}) {
    const QImage image = show(filled(name));
    const bool isBlank = QString(name).trimmed().isEmpty();
    EXPECT_EQ(count(image, qRgb(0, 0, 0), 60) == 0, isBlank) << name;
  }
}

TEST_F(StatusItemTest, DrawsEmojiInTheirColors) {
  const QImage image = show(filled(" \xF0\x9F\x8D\x8E "));
  // The apple's red is neither in the background nor a shade of grey.
  EXPECT_GT(count(image, qRgb(210, 40, 50), 50), 10);
}

TEST_F(StatusItemTest, DrawsANameOfSeveralLinesOnOne) {
  EXPECT_EQ(show(filled(" two lines ")), show(filled(" two\nlines ")));
}

TEST_F(StatusItemTest, TakesBrokenAndEndlessText) {
  show(filled(" \xFF\xC3 "));
  EXPECT_GT(strip().width(), 5);
  show(filled(std::string(100000, 'x')));
  EXPECT_EQ(strip().width(), strip().screen()->geometry().width());
}

// How wide it is

TEST_F(StatusItemTest, IsAsWideAsItsTitle) {
  show(filled(" A "));
  const int narrow = strip().width();
  show(filled(" A much longer name "));
  EXPECT_GT(strip().width(), narrow + 50);
  show(filled("A"));
  EXPECT_LT(strip().width(), narrow) << "blanks count";
}

TEST_F(StatusItemTest, IsSquareWhenToldSo) {
  const QImage image = show(icon());
  EXPECT_EQ(image.size(), QSize(24, 24));
}

TEST_F(StatusItemTest, IsExactlyAsWideAsTold) {
  show(fixed(filled(" A ")));
  EXPECT_EQ(strip().width(), 140);
  show(fixed(filled(" A name that is much too long for so little room ")));
  EXPECT_EQ(strip().width(), 140);
}

TEST_F(StatusItemTest, AWideTitleIsCutOffAtItsEnd) {
  const std::string name = " A name that is much too long for so little room";
  const QImage image = show(fixed(filled(name)));
  // The truncated part leaves no trace, not even an ellipsis.
  EXPECT_EQ(image, show(fixed(filled(name + ", and longer still"))));
  EXPECT_GT(count(image.copy(130, 0, 10, 24), qRgb(0, 0, 0), 60), 0) << "up to the edge";
  EXPECT_GT(count(image.copy(0, 0, 20, 24), qRgb(0, 0, 0), 60), 0) << "from the start";
}

TEST_F(StatusItemTest, AWideTitleThatRunsToTheLeftIsCutOffThere) {
  const std::string name = " שולחן עבודה שולחן עבודה שולחן עבודה";
  const QImage image = show(fixed(filled(name)));
  EXPECT_EQ(image, show(fixed(filled(name + " שולחן"))));
}

TEST_F(StatusItemTest, AWideTitleIsCutOffWithTheFill) {
  for (const std::string& name :
       {std::string(60, 'M'), std::string("שולחן עבודה שולחן עבודה שולחן")}) {
    const QImage image = show(fixed(filled(name)));
    for (const int x : {0, image.width() - 1}) {
      EXPECT_EQ(count(image.copy(x, 0, 1, image.height()), kLightBar), image.height()) << name;
    }
  }
}

TEST_F(StatusItemTest, ANarrowTitleStandsInTheMiddleOfAFixedWidth) {
  const QImage image = show(fixed(filled(" H ")));
  int left = 0;
  while (left < 140 && distance(image.pixel(left, 12), rgbOf(kPink)) < 60) left += 1;
  int right = 139;
  while (right > 0 && distance(image.pixel(right, 12), rgbOf(kPink)) < 60) right -= 1;
  EXPECT_NEAR(left, 139 - right, 2);
}

}  // namespace
}  // namespace vembrix
