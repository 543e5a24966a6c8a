#include "platform/Color.h"

#include <gtest/gtest.h>

namespace vembrix {
namespace {

TEST(ColorTest, AnotherOpacityKeepsTheComponents) {
  EXPECT_EQ(Color(Srgb{0.1, 0.2, 0.3, 0.4}).withAlpha(0.5), Color(Srgb{0.1, 0.2, 0.3, 0.5}));
}

TEST(ColorTest, AnotherOpacityKeepsTheNameOfASystemColor) {
  EXPECT_EQ(Color(SystemColor::ControlAccent).withAlpha(0.16),
            Color(SystemColor::ControlAccent, 0.16));
}

TEST(ColorTest, AnUnknownAppearanceCountsAsLight) {
  EXPECT_EQ(orLight({}), Appearance::Light);
  EXPECT_EQ(orLight(Appearance::Dark), Appearance::Dark);
}

}  // namespace
}  // namespace vembrix
