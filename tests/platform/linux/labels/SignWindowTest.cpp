#include "platform/SignWindow.h"

#include <gmock/gmock.h>

#include <QImage>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <functional>
#include <vector>

#include "platform/TextSize.h"
#include "platform/TourOverlay.h"
#include "platform/WindowServer.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/labels/AlphaFade.h"
#include "platform/linux/labels/BareWindow.h"
#include "platform/linux/labels/PanelStage.h"
#include "platform/linux/session/Compositor.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

/// The width of the shadow around the panel.
constexpr int kShadow = 24;

class SignWindowTest : public testing::Test {
 protected:
  SignWindowTest() { TestSession::useNoScreen(); }

  static std::vector<BareWindow*> panelsOfRole(const QString& role) {
    std::vector<BareWindow*> found;
    for (BareWindow* panel : PanelStage::shared().panels()) {
      if (panel->role() == role) found.push_back(panel);
    }
    return found;
  }

  void make(double width = 400, double height = 160) {
    window_ =
        SignWindow::create({.frame = {100, 200, width, height}, .cornerRadius = 40, .padding = 40});
    window_->view().setFont({.weight = Font::Weight::Heavy, .size = 60});
    window_->view().setLook(
        {.fill = {1, 0, 0, 0.5}, .textColor = {1, 1, 1}, .rim = {0, 1, 0, 1}, .borderWidth = 4});
    panel_ = panelsOfRole("label").at(0);
  }

  /// Returns the picture of the panel without its shadow.
  QImage picture(double scale = 1, Backing backing = Backing::Translucent) const {
    const QRectF panel = panel_->bounds().adjusted(kShadow, kShadow, -kShadow, -kShadow);
    return panel_->picture(scale, backing, panel);
  }

  /// Returns the first and last column with a pixel of the text's white.
  static std::pair<int, int> textSpan(const QImage& image) {
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
      for (int y = 0; y < image.height(); ++y) {
        const QColor color = image.pixelColor(x, y);
        if (color.blue() < 250 || color.green() < 250) continue;
        first = std::min(first, x);
        last = std::max(last, x);
      }
    }
    return {first, last};
  }

  TestSession session_;
  std::unique_ptr<SignWindow> window_;
  BareWindow* panel_ = nullptr;
};

TEST_F(SignWindowTest, HasFillRimAndRoundCorners) {
  make();
  const QImage image = picture();
  EXPECT_EQ(image.size(), QSize(400, 160));
  EXPECT_EQ(image.pixelColor(20, 80), QColor(255, 0, 0, 128));
  EXPECT_EQ(image.pixelColor(1, 80), QColor(0, 255, 0, 255)) << "the rim is inside the edge";
  EXPECT_EQ(image.pixelColor(2, 80), QColor(0, 255, 0, 255));
  EXPECT_LT(image.pixelColor(0, 0).alpha(), 100) << "nothing but shadow in the corner";
  EXPECT_EQ(image.pixelColor(0, 0).red(), 0);
}

TEST_F(SignWindowTest, WithoutARimThereIsNone) {
  make();
  window_->view().setLook({.fill = {0, 0, 1, 1}, .textColor = {1, 1, 1}, .rim = {0, 1, 0, 1}});
  EXPECT_EQ(picture().pixelColor(1, 80), QColor(0, 0, 255));
}

TEST_F(SignWindowTest, TheTextIsInTheMiddle) {
  make();
  window_->view().setText("HOH");
  const auto [first, last] = textSpan(picture());
  EXPECT_NEAR(first, 399 - last, 3);
  const Size size = textSize("HOH", {.weight = Font::Weight::Heavy, .size = 60});
  EXPECT_NEAR(last - first, size.width, 12);
}

TEST_F(SignWindowTest, ALongTextEndsInsideThePadding) {
  make();
  for (const char* text :
       {"A name that is much too long for it", "مكتب العمل الكبير جدا في المدينة"}) {
    window_->view().setText(text);
    const auto [first, last] = textSpan(picture());
    EXPECT_GE(first, 39) << text;
    EXPECT_LE(last, 361) << text;
    EXPECT_GT(last - first, 200) << text;
  }
}

TEST_F(SignWindowTest, ALongTextLooksAsIfItsBeginningAndAnEllipsisHadBeenGiven) {
  make();
  const Font font{.weight = Font::Weight::Heavy, .size = 60};
  std::string name = "Donaudampfschifffahrtsgesellschaft";
  window_->view().setText(name);
  const QImage cut = picture();
  // The label's width without its paddings.
  constexpr double kRoom = 400 - 2 * 40;
  const std::string ellipsis = "\u2026";
  while (textSize(name + ellipsis, font).width > kRoom) name.pop_back();
  ASSERT_GE(name.size(), 3U);
  window_->view().setText(name + ellipsis);
  EXPECT_EQ(cut, picture()) << name;
  window_->view().setText(name);
  EXPECT_NE(cut, picture());
}

TEST_F(SignWindowTest, IsDrawnFinerOnAFinerScreen) {
  make();
  window_->view().setText("HOH");
  const auto [first, last] = textSpan(picture());
  const QImage fine = picture(2);
  EXPECT_EQ(fine.size(), QSize(800, 320));
  const auto [fineFirst, fineLast] = textSpan(fine);
  EXPECT_NEAR(fineFirst, 2 * first, 3);
  EXPECT_NEAR(fineLast, 2 * last + 1, 3);
}

TEST_F(SignWindowTest, OnAnOpaqueBackingEveryPixelOfThePanelIsOpaque) {
  make();
  window_->view().setText("Mail");
  const QImage image = picture(1, Backing::Opaque);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ASSERT_EQ(image.pixelColor(x, y).alpha(), 255);
  }
}

TEST_F(SignWindowTest, WithoutACompositorTheCornersAreRoundAndTheRimIsEven) {
  make();
  for (const double scale : {1.0, 1.5, 2.0}) {
    const QImage image = picture(scale, Backing::Opaque);
    const double radius = 40 * scale;
    const QRegion shape = roundedShape(QRectF(image.rect()), radius);
    EXPECT_EQ(shape.boundingRect(), image.rect());
    for (int y = 0; y < radius; ++y) {
      for (int x = 0; x < radius; ++x) {
        const double depth = radius - std::hypot(x + 0.5 - radius, y + 0.5 - radius);
        const bool isInside = shape.contains(QPoint(x, y));
        if (std::abs(depth) > 0.1) {
          EXPECT_EQ(isInside, depth > 0) << x << " " << y << " at " << scale;
        }
        if (isInside && depth < 3 * scale) {
          EXPECT_EQ(image.pixelColor(x, y), QColor(0, 255, 0)) << x << " " << y << " at " << scale;
        }
      }
    }
  }
}

TEST_F(SignWindowTest, APartOfThePictureIsThatPartOfTheWhole) {
  make();
  window_->view().setText("Mail");
  const QRect part(150, 60, 120, 40);
  const QImage whole = panel_->picture(1, Backing::Translucent, panel_->bounds());
  EXPECT_EQ(panel_->picture(1, Backing::Translucent, part), whole.copy(part));
}

TEST_F(SignWindowTest, TheWindowIsNamedAfterTheText) {
  make();
  window_->view().setText("Büro [*]");
  EXPECT_EQ(panel_->name(), "Büro [*]");
}

TEST_F(SignWindowTest, WhatIsSetAlreadyChangesNothing) {
  make();
  window_->view().setText("Mail");
  const QImage before = picture();
  window_->view().setText("Mail");
  window_->view().setFont({.weight = Font::Weight::Heavy, .size = 60});
  window_->setFrame(window_->frame());
  EXPECT_EQ(picture(), before);
}

TEST_F(SignWindowTest, IsShownAfterTheEvent) {
  make();
  window_->orderFront();
  EXPECT_FALSE(panel_->isShown()) << "it may still be told where";
  EXPECT_TRUE(runUntil([&] { return panel_->isShown(); }));
}

TEST_F(SignWindowTest, IsShownInItsSpaceOnly) {
  make();
  window_->orderFront();
  ASSERT_TRUE(runUntil([&] { return panel_->isShown(); }));
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.activate(desktop.spaceAt(2));
  EXPECT_TRUE(runUntil([&] { return !panel_->isShown(); }));
  desktop.activate(desktop.spaceAt(0));
  EXPECT_TRUE(runUntil([&] { return panel_->isShown(); }));
}

TEST_F(SignWindowTest, ToldToBeElsewhereItNeverFlashesUp) {
  make();
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  window_->orderFront();
  WindowServer& server = WindowServer::shared();
  const std::array windows{window_->windowNumber()};
  server.CGSAddWindowsToSpaces(1, windows, std::array{desktop.spaceAt(3)});
  server.CGSRemoveWindowsFromSpaces(1, windows, std::array{desktop.spaceAt(0)});
  EXPECT_FALSE(runUntil([&] { return panel_->isShown(); }, milliseconds(100)));
}

TEST_F(SignWindowTest, IsShownOnlyWhileItsAlphaIsAboveZero) {
  make();
  window_->setAlphaValue(0);
  window_->orderFront();
  EXPECT_FALSE(runUntil([&] { return panel_->isShown(); }, milliseconds(100)));
  window_->setAlphaValue(0.01);
  EXPECT_TRUE(runUntil([&] { return panel_->isShown(); }));
  window_->animateAlphaValue(0, milliseconds(100));
  EXPECT_TRUE(runUntil([&] { return !panel_->isShown(); }));
  EXPECT_EQ(window_->alphaValue(), 0);
}

TEST_F(SignWindowTest, IsNotShownWhereNoSpaceIsActive) {
  make();
  window_->orderFront();
  ASSERT_TRUE(runUntil([&] { return panel_->isShown(); }));
  EmbeddedDesktop::shared().setSpaceCount(0);
  EXPECT_TRUE(runUntil([&] { return !panel_->isShown(); }));
}

TEST_F(SignWindowTest, GoesInTheMiddleOfAnAnimation) {
  make();
  window_->orderFront();
  window_->animateAlphaValue(0, milliseconds(200));
  runFor(milliseconds(50));
  window_.reset();
  EXPECT_TRUE(panelsOfRole("label").empty());
  runFor(milliseconds(300));
}

class TourOverlayTest : public SignWindowTest {
 protected:
  std::unique_ptr<TourOverlay> overlay_ =
      TourOverlay::create({.frame = {100, 200, 520, 96},
                           .collectionBehavior = CanJoinAllSpaces,
                           .fill = {0, 0, 0, 0.72},
                           .cornerRadius = 48,
                           .spinnerSize = 24,
                           .text = "Initializing desktops, stand by",
                           .font = {.weight = Font::Weight::Semibold, .size = 22},
                           .textColor = {1, 1, 1},
                           .spacing = 16,
                           .padding = 28});
};

TEST_F(TourOverlayTest, ShowsAPillWithTheText) {
  panel_ = panelsOfRole("tour-overlay").at(0);
  const QImage image = picture();
  EXPECT_EQ(image.pixelColor(60, 48), QColor(0, 0, 0, 184));
  const auto [first, last] = textSpan(image);
  EXPECT_GT(first, 28);
  EXPECT_LT(last, 520 - 28);
  EXPECT_EQ(panel_->name(), "Initializing desktops, stand by");
}

TEST_F(TourOverlayTest, IsShownInEverySpace) {
  overlay_->show(milliseconds(0));
  panel_ = panelsOfRole("tour-overlay").at(0);
  ASSERT_TRUE(runUntil([&] { return panel_->isShown(); }));
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.activate(desktop.spaceAt(3));
  runFor(milliseconds(50));
  EXPECT_TRUE(panel_->isShown());
}

TEST_F(TourOverlayTest, FadesOutWhenTheOverlayIsGoneAlready) {
  overlay_->show(milliseconds(50));
  ASSERT_TRUE(runUntil([&] { return panelsOfRole("tour-overlay").at(0)->isShown(); }));
  runFor(milliseconds(100));
  overlay_->hide(milliseconds(250));
  overlay_.reset();
  runFor(milliseconds(20));
  EXPECT_EQ(panelsOfRole("tour-overlay").size(), 1U);
  EXPECT_TRUE(runUntil([&] { return panelsOfRole("tour-overlay").empty(); }));
}

TEST_F(TourOverlayTest, GoesAtOnceWhenItWasNotHidden) {
  overlay_->show(milliseconds(50));
  overlay_.reset();
  EXPECT_TRUE(panelsOfRole("tour-overlay").empty());
}

TEST_F(TourOverlayTest, HiddenBeforeItHasFadedInItGoesTheSameWay) {
  overlay_->show(milliseconds(200));
  overlay_->hide(milliseconds(100));
  EXPECT_TRUE(runUntil([&] { return panelsOfRole("tour-overlay").empty(); }));
}

// Fades

class AlphaFadeTest : public SignWindowTest {
 protected:
  /// Fades between the values; returns the reported ones, including the last.
  std::vector<double> fade(double from, double to, bool gradual) {
    std::vector<double> values;
    AlphaFade alpha([&](double value) { values.push_back(value); });
    alpha.set(from);
    values.clear();
    alpha.setGradual(gradual);
    alpha.animate(to, milliseconds(300));
    EXPECT_TRUE(runUntil([&] { return !alpha.isRunning(); }));
    return values;
  }
};

TEST_F(AlphaFadeTest, AGradualOneHasAStepPerPictureOfTheScreen) {
  make();
  const std::vector<double> values = fade(1, 0, true);
  EXPECT_GT(values.size(), 4U);
  EXPECT_TRUE(std::ranges::is_sorted(values, std::greater()));
  EXPECT_EQ(values.back(), 0);
}

TEST_F(AlphaFadeTest, AnotherHasItsEndAlone) {
  make();
  EXPECT_EQ(fade(1, 0, false), std::vector<double>{0});
}

TEST_F(AlphaFadeTest, FromZeroItHasItsBeginningToo) {
  make();
  const std::vector<double> values = fade(0, 1, false);
  ASSERT_EQ(values.size(), 2U);
  EXPECT_GT(values.front(), 0);
  EXPECT_EQ(values.back(), 1);
}

TEST_F(AlphaFadeTest, MayBecomeGradualOnTheWay) {
  make();
  int steps = 0;
  AlphaFade alpha([&](double) { steps += 1; });
  alpha.animate(0, milliseconds(400));
  runFor(milliseconds(50));
  EXPECT_EQ(steps, 0);
  alpha.setGradual(true);
  EXPECT_TRUE(runUntil([&] { return steps > 3; }));
}

}  // namespace
}  // namespace vembrix
