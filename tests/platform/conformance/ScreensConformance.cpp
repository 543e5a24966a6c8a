#include "platform/Screens.h"

#include <gmock/gmock.h>

#include <chrono>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

bool contains(const Rect& outer, const Rect& inner) {
  return inner.x >= outer.x && inner.y >= outer.y &&
         inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

class ScreensConformance : public testing::Test {
 protected:
  /// Waits until the primary screen has that size; returns whether it came to that.
  bool runUntilSize(double width, double height) {
    const Rect frame{0, 0, width, height};
    return system_.runUntil(
        [&] { return !screens_.all().empty() && screens_.all()[0].frame == frame; }, kPatience);
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  const Screens& screens_ = Screens::shared();
};

TEST_F(ScreensConformance, ThePrimaryScreenComesFirstAndHoldsTheOrigin) {
  ASSERT_FALSE(screens_.all().empty());
  const Screen& primary = screens_.all()[0];
  EXPECT_EQ(primary.frame.x, 0);
  EXPECT_EQ(primary.frame.y, 0);
  EXPECT_EQ((Size{primary.frame.width, primary.frame.height}), (Size{1440, 900}));
}

TEST_F(ScreensConformance, TheVisibleFrameIsAPartOfTheFrame) {
  for (const Screen& screen : screens_.all()) {
    EXPECT_TRUE(contains(screen.frame, screen.visibleFrame));
    EXPECT_GT(screen.visibleFrame.width, 0);
    EXPECT_GT(screen.visibleFrame.height, 0);
    EXPECT_GE(screen.scale, 1);
  }
}

TEST_F(ScreensConformance, TheMainScreenIsOneOfThem) {
  const Screen* main = screens_.mainScreen();
  ASSERT_NE(main, nullptr);
  EXPECT_THAT(screens_.all(), testing::Contains(*main));
}

TEST_F(ScreensConformance, FollowTheSizeOfTheScreen) {
  system_.resizeScreen(1200, 800);
  EXPECT_TRUE(runUntilSize(1200, 800));
  EXPECT_TRUE(contains(screens_.all()[0].frame, screens_.all()[0].visibleFrame));
  system_.resizeScreen(1280, 720);
  EXPECT_TRUE(runUntilSize(1280, 720));
}

TEST_F(ScreensConformance, AChangeIsAnnouncedOnceWhenItHolds) {
  std::vector<std::vector<Screen>> seen;
  const auto before = screens_.all();
  const auto observation = NotificationCenter::defaultCenter().addObserver(
      notification::kScreenParametersDidChange, [&] { seen.push_back(screens_.all()); });
  system_.resizeScreen(1200, 800);
  EXPECT_TRUE(system_.runUntil([&] { return !seen.empty(); }, kPatience));
  EXPECT_TRUE(runUntilSize(1200, 800));
  // The desktop may answer with a change of its own, such as moved panels; no change is
  // announced twice.
  system_.runFor(milliseconds(200));
  ASSERT_FALSE(seen.empty());
  EXPECT_NE(seen.front(), before);
  for (std::size_t i = 1; i < seen.size(); ++i) EXPECT_NE(seen[i], seen[i - 1]);
  EXPECT_EQ(seen.back(), screens_.all());
  EXPECT_EQ(seen.back()[0].frame, (Rect{0, 0, 1200, 800}));
}

TEST_F(ScreensConformance, TheSameSizeAgainIsNoChange) {
  system_.resizeScreen(1200, 800);
  EXPECT_TRUE(runUntilSize(1200, 800));
  system_.runFor(milliseconds(200));
  int changes = 0;
  const auto observation = NotificationCenter::defaultCenter().addObserver(
      notification::kScreenParametersDidChange, [&] { changes += 1; });
  system_.resizeScreen(1200, 800);
  system_.runFor(milliseconds(200));
  EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace vembrix
