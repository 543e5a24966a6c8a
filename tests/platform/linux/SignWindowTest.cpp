#include "platform/SignWindow.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QWidget>
#include <QWindow>
#include <chrono>
#include <vector>

#include "platform/TextSize.h"
#include "platform/TourOverlay.h"
#include "platform/linux/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

/// The shadow is around the panel.
constexpr int kShadow = 24;

class SignWindowTest : public testing::Test {
 protected:
  SignWindowTest() { TestSession::useNoScreen(); }

  static std::vector<QWidget*> windowsOfRole(const QString& role) {
    std::vector<QWidget*> found;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->windowRole() == role) found.push_back(widget);
    }
    return found;
  }

  void make(double width = 400, double height = 160) {
    window_ =
        SignWindow::create({.frame = {100, 200, width, height}, .cornerRadius = 40, .padding = 40});
    window_->view().setFont({.weight = Font::Weight::Heavy, .size = 60});
    window_->view().setLook(
        {.fill = {1, 0, 0, 0.5}, .textColor = {1, 1, 1}, .rim = {0, 1, 0, 1}, .borderWidth = 4});
    widget_ = windowsOfRole("label").at(0);
  }

  /// Of the panel, without its shadow.
  QImage picture() {
    const QRect panel = widget_->rect().adjusted(kShadow, kShadow, -kShadow, -kShadow);
    QImage image(widget_->size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    widget_->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image.copy(panel);
  }

  /// Columns with a pixel of the text's white.
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
  QWidget* widget_ = nullptr;
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
  // What the label leaves between its paddings.
  constexpr double kRoom = 400 - 2 * 40;
  const std::string ellipsis = "\u2026";
  while (textSize(name + ellipsis, font).width > kRoom) name.pop_back();
  ASSERT_GE(name.size(), 3U);
  window_->view().setText(name + ellipsis);
  EXPECT_EQ(cut, picture()) << name;
  window_->view().setText(name);
  EXPECT_NE(cut, picture());
}

TEST_F(SignWindowTest, TheWindowIsNamedAfterTheText) {
  make();
  window_->view().setText("Büro [*]");
  EXPECT_EQ(widget_->windowHandle()->title(), "Büro [*]");
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
  EXPECT_FALSE(widget_->isVisible()) << "it may still be told where";
  EXPECT_TRUE(runUntil([&] { return widget_->isVisible(); }));
}

TEST_F(SignWindowTest, GoesInTheMiddleOfAnAnimation) {
  make();
  window_->orderFront();
  window_->animateAlphaValue(0, milliseconds(200));
  runFor(milliseconds(50));
  window_.reset();
  EXPECT_TRUE(windowsOfRole("label").empty());
  runFor(milliseconds(300));
}

class TourOverlayTest : public SignWindowTest {
 protected:
  std::unique_ptr<TourOverlay> overlay_ =
      TourOverlay::create({.frame = {100, 200, 520, 96},
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
  widget_ = windowsOfRole("tour-overlay").at(0);
  const QImage image = picture();
  EXPECT_EQ(image.pixelColor(60, 48), QColor(0, 0, 0, 184));
  const auto [first, last] = textSpan(image);
  EXPECT_GT(first, 28);
  EXPECT_LT(last, 520 - 28);
  EXPECT_EQ(widget_->windowHandle()->title(), "Initializing desktops, stand by");
}

TEST_F(TourOverlayTest, FadesOutWhenTheOverlayIsGoneAlready) {
  overlay_->show(milliseconds(50));
  ASSERT_TRUE(runUntil([&] { return windowsOfRole("tour-overlay").at(0)->isVisible(); }));
  runFor(milliseconds(100));
  overlay_->hide(milliseconds(250));
  overlay_.reset();
  runFor(milliseconds(20));
  EXPECT_EQ(windowsOfRole("tour-overlay").size(), 1U);
  EXPECT_TRUE(runUntil([&] { return windowsOfRole("tour-overlay").empty(); }));
}

TEST_F(TourOverlayTest, GoesAtOnceWhenItWasNotHidden) {
  overlay_->show(milliseconds(50));
  overlay_.reset();
  EXPECT_TRUE(windowsOfRole("tour-overlay").empty());
}

TEST_F(TourOverlayTest, HiddenBeforeItHasFadedInItGoesTheSameWay) {
  overlay_->show(milliseconds(200));
  overlay_->hide(milliseconds(100));
  EXPECT_TRUE(runUntil([&] { return windowsOfRole("tour-overlay").empty(); }));
}

}  // namespace
}  // namespace vembrix
