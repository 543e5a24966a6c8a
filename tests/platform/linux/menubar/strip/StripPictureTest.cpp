#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#include "platform/Application.h"
#include "platform/StatusItem.h"
#include "platform/linux/menubar/strip/StatusStripTest.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Not;
using Geometry = X11Client::Geometry;

/// The strip as it is drawn on the screen.
class StripPictureTest : public StatusStripTest {
 protected:
  /// The colour in the middle of the strip's left end, beside its text.
  QRgb color() {
    const Geometry place = geometry();
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    return screen.pixel(place.x + 3, place.y + place.height / 2);
  }
  bool runUntilColor(QRgb wanted) {
    return runUntil([&] { return color() == wanted; });
  }

  static StatusItemContent filled(const Srgb& fill, double width = 140) {
    StatusItemContent content = narrow();
    content.fill = fill;
    content.length = StatusItemLength::fixed(width);
    return content;
  }

  static constexpr Srgb kRed{1, 0, 0};
  static constexpr Srgb kBlue{0, 0, 1};
  static constexpr QRgb kRedPixel = 0xFFFF0000;
  static constexpr QRgb kBluePixel = 0xFF0000FF;
};

TEST_F(StripPictureTest, FollowsItsContent) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  item_->setContent(filled(kBlue));
  EXPECT_TRUE(runUntilColor(kBluePixel));
  item_->setContent(filled(kRed));
  EXPECT_TRUE(runUntilColor(kRedPixel)) << "a look that was seen before";
}

TEST_F(StripPictureTest, FollowsItsContentAndItsWidth) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  item_->setContent(filled(kBlue, 200));
  ASSERT_TRUE(runUntilGeometry({1240, 0, 200, 24}));
  EXPECT_TRUE(runUntilColor(kBluePixel));
  item_->setContent(filled(kRed, 100));
  ASSERT_TRUE(runUntilGeometry({1340, 0, 100, 24}));
  EXPECT_TRUE(runUntilColor(kRedPixel));
}

TEST_F(StripPictureTest, ManyLooksAreFollowedToo) {
  show(filled(kRed));
  // More looks than the server keeps.
  for (int i = 0; i < 100; ++i) item_->setContent(filled({0, i / 100.0, 0}));
  item_->setContent(filled(kRed));
  EXPECT_TRUE(runUntilColor(kRedPixel));
}

TEST_F(StripPictureTest, IsWholeAgainAfterItWasCoveredWithoutTheProgram) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  const Geometry place = geometry();
  QWidget cover(nullptr, Qt::Window | Qt::X11BypassWindowManagerHint);
  cover.setGeometry(place.x, place.y, place.width, place.height);
  cover.setStyleSheet(QStringLiteral("background: blue"));
  cover.show();
  ASSERT_TRUE(runUntilColor(kBluePixel));
  cover.hide();
  // Read before the program handles any event.
  EXPECT_EQ(color(), kRedPixel);
}

TEST_F(StripPictureTest, IsWholeInAWindowThatWasMadeAnew) {
  show(filled(kRed));
  ASSERT_TRUE(runUntilColor(kRedPixel));
  client().unmap(strip_);
  expectRestored();
  EXPECT_TRUE(runUntilColor(kRedPixel));
}

TEST_F(StripPictureTest, NoWindowManagerWaitsForItToPaint) {
  show(filled(kRed));
  EXPECT_THAT(client().atoms(strip_, "WM_PROTOCOLS"),
              AllOf(Contains("WM_DELETE_WINDOW"), Contains("_NET_WM_PING"),
                    Not(Contains("_NET_WM_SYNC_REQUEST"))));
}

}  // namespace
}  // namespace vembrix
