#include "platform/macos/menubar/ItemSight.h"

#include <gtest/gtest.h>

#include <vector>

namespace vembrix {
namespace {

/// A screen of 14 inches with a camera, as measured.
constexpr Rect kFrame{0, 0, 1800, 1169};
constexpr Rect kNotch{791, 1132, 221, 37};
/// A screen without a camera, to the right of the other.
constexpr Rect kOther{1800, 100, 1920, 1080};

class ItemSightTest : public testing::Test {
 protected:
  bool isSeen(const Rect& frame) const { return isItemSeen(ItemWindow{frame, true}, screens_); }

  const std::vector<MenuBarScreen> screens_{{kFrame, kNotch}, {kOther, {}}};
};

TEST_F(ItemSightTest, AnItemInTheMenuBarIsSeen) {
  EXPECT_TRUE(isSeen({1500, 1132, 90, 37}));
  EXPECT_TRUE(isSeen({3000, 1156, 90, 24})) << "of the other screen";
}

TEST_F(ItemSightTest, AnItemBehindTheCameraIsNot) {
  EXPECT_FALSE(isSeen({902, 1132, 36, 37}));
  EXPECT_FALSE(isSeen({767, 1132, 170, 37})) << "24 points of it look out";
}

TEST_F(ItemSightTest, HalfOfAnItemIsEnough) {
  EXPECT_TRUE(isSeen({1012 - 45, 1132, 90, 37}));
  EXPECT_FALSE(isSeen({1012 - 46, 1132, 90, 37}));
}

TEST_F(ItemSightTest, AnItemWithoutAWindowOrOutsideAllScreensIsNotSeen) {
  EXPECT_FALSE(isItemSeen(std::nullopt, screens_));
  EXPECT_FALSE(isSeen({-37, 1132, 36, 37})) << "on the left of all screens";
  EXPECT_FALSE(isSeen({-1, -37, 36, 37})) << "below them";
  EXPECT_FALSE(isSeen({0, 1132, 0, 37})) << "without a width";
  EXPECT_FALSE(isItemSeen(ItemWindow{{1500, 1132, 90, 37}, true}, {})) << "no screens";
}

TEST_F(ItemSightTest, AnItemThatIsCoveredIsNotSeen) {
  EXPECT_FALSE(isItemSeen(ItemWindow{{1500, 1132, 90, 37}, false}, screens_));
}

TEST_F(ItemSightTest, TheCameraIsBetweenTheAreasBesideIt) {
  EXPECT_EQ(notchBetween(kFrame, {0, 1132, 791, 37}, {1012, 1132, 788, 37}), kNotch);
  EXPECT_EQ(notchBetween(kFrame, {}, {}), Rect{}) << "a screen without one";
  EXPECT_EQ(notchBetween(kFrame, {0, 1132, 900, 37}, {900, 1132, 900, 37}), Rect{});
}

}  // namespace
}  // namespace vembrix
