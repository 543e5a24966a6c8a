#include "menubar/ColorLegibility.h"

#include <gtest/gtest.h>

#include "platform/Application.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"

namespace vembrix {
namespace {

void expectComponents(const Color& color, const Srgb& expected) {
  const std::optional<Srgb> srgb = color.srgb();
  ASSERT_TRUE(srgb);
  EXPECT_DOUBLE_EQ(srgb->red, expected.red);
  EXPECT_DOUBLE_EQ(srgb->green, expected.green);
  EXPECT_DOUBLE_EQ(srgb->blue, expected.blue);
  EXPECT_DOUBLE_EQ(srgb->alpha, expected.alpha);
}

TEST(ColorLegibilityTest, DarkColorsAreLightenedOnDark) {
  expectComponents(adjustedForeground(Srgb{0.1, 0.1, 0.1, 0.5}, Appearance::Dark),
                   {0.35, 0.35, 0.35, 0.5});
  expectComponents(adjustedForeground(Srgb{0.0, 0.0, 1.0}, Appearance::Dark), {0.2, 0.2, 1.0, 1.0});
}

TEST(ColorLegibilityTest, ColorsThatAreLightEnoughStayOnDark) {
  const Srgb color{0.26, 0.26, 0.26};
  EXPECT_EQ(adjustedForeground(color, Appearance::Dark), Color(color));
  EXPECT_EQ(adjustedForeground(kWhite, Appearance::Dark), Color(kWhite));
}

TEST(ColorLegibilityTest, LightColorsAreHalvedOnLight) {
  expectComponents(adjustedForeground(Srgb{1, 1, 1, 0.3}, Appearance::Light), {0.5, 0.5, 0.5, 0.3});
  expectComponents(adjustedForeground(Srgb{1.0, 0.85, 0.6}, Appearance::Light),
                   {0.5, 0.425, 0.3, 1.0});
}

TEST(ColorLegibilityTest, ColorsThatAreDarkEnoughStayOnLight) {
  const Srgb color{0.74, 0.74, 0.74};
  EXPECT_EQ(adjustedForeground(color, Appearance::Light), Color(color));
  EXPECT_EQ(adjustedForeground(kBlack, Appearance::Light), Color(kBlack));
}

TEST(ColorLegibilityTest, AColorThatOnlyTheSystemKnowsStays) {
  const Color accent(SystemColor::ControlAccent);
  EXPECT_EQ(adjustedForeground(accent, Appearance::Dark), accent);
  EXPECT_EQ(adjustedForeground(accent, Appearance::Light), accent);
}

TEST(ColorLegibilityTest, TheSystemsAppearanceDecides) {
  const Color black = kBlack;
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.setAppearance(Appearance::Dark);
  expectComponents(adjustedForeground(black), {0.2, 0.2, 0.2, 1.0});
  desktop.setAppearance(Appearance::Light);
  EXPECT_EQ(adjustedForeground(black), black);
}

TEST(ColorLegibilityTest, ASystemThatDoesNotTellIsLight) {
  EmbeddedDesktop::shared().setAppearance(std::nullopt);
  EXPECT_EQ(systemAppearance(), Appearance::Light);
}

TEST(ColorLegibilityTest, TextIsBlackOnLightColorsAndWhiteOnDarkOnes) {
  EXPECT_EQ(contrastingColor(kWhite), Color(kBlack));
  EXPECT_EQ(contrastingColor(kBlack), Color(kWhite));
  EXPECT_EQ(contrastingColor(Srgb{0, 1, 0}), Color(kBlack));
  EXPECT_EQ(contrastingColor(Srgb{1, 0, 0}), Color(kWhite));
}

// The limits, by green alone: the luminance of these greens is exactly a quarter, a half and three
// quarters.
constexpr double kQuarter = 0.4258943781942079;
constexpr double kHalf = 0.8517887563884158;
constexpr double kThreeQuarters = 1.2776831345826236;

TEST(ColorLegibilityTest, TextIsWhiteOnExactlyHalfALight) {
  EXPECT_EQ(contrastingColor(Srgb{0, kHalf, 0}), Color(kWhite));
  EXPECT_EQ(contrastingColor(Srgb{0, kHalf + 1e-9, 0}), Color(kBlack));
}

TEST(ColorLegibilityTest, ColorsOnTheBordersStay) {
  EXPECT_EQ(adjustedForeground(Srgb{0, kQuarter, 0}, Appearance::Dark),
            Color(Srgb{0, kQuarter, 0}));
  EXPECT_NE(adjustedForeground(Srgb{0, kQuarter - 1e-9, 0}, Appearance::Dark),
            Color(Srgb{0, kQuarter - 1e-9, 0}));
  EXPECT_EQ(adjustedForeground(Srgb{0, kThreeQuarters, 0}, Appearance::Light),
            Color(Srgb{0, kThreeQuarters, 0}));
  EXPECT_NE(adjustedForeground(Srgb{0, kThreeQuarters + 1e-9, 0}, Appearance::Light),
            Color(Srgb{0, kThreeQuarters + 1e-9, 0}));
}

TEST(ColorLegibilityTest, TextIsWhiteOnAColorThatOnlyTheSystemKnows) {
  EXPECT_EQ(contrastingColor(Color(SystemColor::TextBackground)), Color(kWhite));
}

}  // namespace
}  // namespace vembrix
