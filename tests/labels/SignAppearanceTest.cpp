#include "labels/SignAppearance.h"

#include <gmock/gmock.h>

#include <limits>

#include "support/SignTest.h"

namespace vembrix {
namespace {

const HeatPalette& ember() {
  return builtInHeatPalettes().front();
}

HeatPalette gray(double level) {
  const CodableColor color{level, level, level, 1};
  return {"Gray", color, color, color};
}

TEST(SignAppearanceTest, AColdLabelIsColdWithoutARim) {
  const SignLook look = signLook(0, ember());
  EXPECT_EQ(look.fill, ember().cold.srgb());
  EXPECT_EQ(look.borderWidth, 0);
  EXPECT_EQ(look.rim.alpha, 0);
}

TEST(SignAppearanceTest, ARimBeginsAboveAHeatOfFiveHundredths) {
  EXPECT_EQ(signLook(0.05, ember()).borderWidth, 0);
  EXPECT_EQ(signLook(0.0500001, ember()).borderWidth, 2);
}

TEST(SignAppearanceTest, ARimOfALittleHeatIsTwoPointsWideAndFaint) {
  const SignLook look = signLook(0.3, ember());
  EXPECT_EQ(look.borderWidth, 2);
  EXPECT_EQ(look.rim.alpha, 0.3);
}

TEST(SignAppearanceTest, ARimGrowsFromHalfHeatOn) {
  EXPECT_EQ(signLook(0.5, ember()).borderWidth, 2);
  EXPECT_DOUBLE_EQ(signLook(0.78, ember()).borderWidth, 3.12);
}

TEST(SignAppearanceTest, AHotLabelIsHotWithAFullRim) {
  const SignLook look = signLook(1, ember());
  EXPECT_EQ(look.fill, ember().hot.srgb());
  EXPECT_EQ(look.borderWidth, 4);
  EXPECT_EQ(look.rim, (Srgb{1.0, 0.64, 0.24, 1}));
}

TEST(SignAppearanceTest, TheRimTakesItsAlphaFromTheHeatWhateverThePaletteSays) {
  HeatPalette palette = ember();
  palette.rim.alpha = 0.1;
  EXPECT_EQ(signLook(0.78, palette).rim, (Srgb{1.0, 0.64, 0.24, 0.78}));
}

TEST(SignAppearanceTest, TextIsWhiteOnAFillOfLuminanceSixTenthsAndBlackAbove) {
  // Components whose luminance is exactly that.
  HeatPalette palette = gray(0);
  palette.cold = {0.3, 0.869335604770017, 0, 1};
  ASSERT_EQ(luminance(palette.cold.srgb()), 0.6);
  EXPECT_EQ(signLook(0, palette).textColor, kWhite);
  palette.cold.green += 1e-9;
  EXPECT_EQ(signLook(0, palette).textColor, kBlack);
}

TEST(SignAppearanceTest, TheFillsAlphaPlaysNoPartInTheTextsColor) {
  HeatPalette palette = gray(0.9);
  palette.cold.alpha = 0;
  EXPECT_EQ(signLook(0, palette).textColor, kBlack);
}

TEST(SignAppearanceTest, TextOnTheBuiltInPalettesIsWhiteButOnHotMono) {
  for (const HeatPalette& palette : builtInHeatPalettes()) {
    EXPECT_EQ(signLook(0, palette).textColor, kWhite) << palette.name;
    EXPECT_EQ(signLook(1, palette).textColor, palette.name == "Mono" ? kBlack : kWhite)
        << palette.name;
  }
}

TEST(SignAppearanceTest, ABlendMixesEveryComponentAlphaIncluded) {
  const Srgb mixed = blend({0, 0.2, 1, 0.5}, {1, 0.6, 0, 1}, 0.25);
  EXPECT_DOUBLE_EQ(mixed.red, 0.25);
  EXPECT_DOUBLE_EQ(mixed.green, 0.3);
  EXPECT_DOUBLE_EQ(mixed.blue, 0.75);
  EXPECT_DOUBLE_EQ(mixed.alpha, 0.625);
}

TEST(SignAppearanceTest, ABlendStaysBetweenItsColors) {
  EXPECT_EQ(blend(kBlack, kWhite, -0.5), kBlack);
  EXPECT_EQ(blend(kBlack, kWhite, 7), kWhite);
  EXPECT_EQ(blend(kBlack, kWhite, std::numeric_limits<double>::infinity()), kWhite);
  EXPECT_EQ(blend(kBlack, kWhite, std::numeric_limits<double>::quiet_NaN()), kBlack);
}

TEST(SignAppearanceTest, TheFontIsHeavyAndOfTheSize) {
  EXPECT_EQ(signFont(90), (Font{.weight = Font::Weight::Heavy, .size = 90}));
}

// On labels

class SignLookTest : public SignTest {
 protected:
  const SignLook& look(std::size_t place) const { return label(place).view().look(); }
};

TEST_F(SignLookTest, APanelHasRoundCornersAndKeepsTheTextOffItsEdges) {
  begin();
  EXPECT_EQ(label(0).options().cornerRadius, 40);
  EXPECT_EQ(label(0).options().padding, 40);
}

TEST_F(SignLookTest, TheFirstLookIsThatOfTheStoredRecency) {
  defaults_.set("SpaceHeatRecency", PropertyList::Array{"embedded-space-9", "embedded-space-2"});
  begin();
  EXPECT_EQ(look(0), signLook(0, ember())) << "not in the list";
  // The label of the active Space includes the active Space in its heat.
  goTo(1);
  EXPECT_EQ(look(1), signLook(0.78, ember()));
}

TEST_F(SignLookTest, LabelsCoolDownByTheOrderInWhichTheirDesktopsWereUsed) {
  SpaceHeatTracker::shared().start();
  beginWithAllLabels(8);
  for (const std::size_t place : {7, 6, 5, 4, 3, 2, 1, 0}) {
    goTo(place);
    engage();
  }
  const double expected[] = {1.0, 0.78, 0.6084, 0.474552, 0.37015056, 0.2887174368, 0};
  for (std::size_t place = 1; place < 8; ++place) {
    EXPECT_EQ(look(place), signLook(expected[place - 1], ember())) << place;
  }
}

TEST_F(SignLookTest, EngagementTintsTheOthersAtOnceAndLeavesTheActiveLabel) {
  SpaceHeatTracker::shared().start();
  beginWithAllLabels(3);
  goTo(1);
  engage();
  EXPECT_EQ(look(1), signLook(0, ember())) << "the active label keeps its tint";
  goTo(2);
  EXPECT_EQ(look(1), signLook(1, ember()));
  engage();
  EXPECT_EQ(look(1), signLook(1, ember()));
  EXPECT_EQ(look(2), signLook(0, ember()));
}

TEST_F(SignLookTest, WithHeatOffLabelsAreColdAtOnceButForTheActiveOne) {
  defaults_.set("SpaceHeatRecency", PropertyList::Array{"embedded-space-2", "embedded-space-3"});
  beginWithAllLabels(3);
  goTo(2);
  ASSERT_EQ(look(1), signLook(1, ember()));
  const SignLook active = look(2);
  store_.setHeatMapSigns(false);
  EXPECT_EQ(look(1), signLook(0, ember()));
  EXPECT_EQ(look(2), active);
  store_.setHeatMapSigns(true);
  EXPECT_EQ(look(1), signLook(1, ember()));
}

TEST_F(SignLookTest, AnotherPaletteIsOnEveryLabelAtOnce) {
  defaults_.set("SpaceHeatRecency", PropertyList::Array{"embedded-space-2"});
  beginWithAllLabels();
  for (const HeatPalette& palette : builtInHeatPalettes()) {
    store_.setHeatPaletteName(palette.name);
    EXPECT_EQ(look(1), signLook(1, palette)) << palette.name;
    EXPECT_EQ(look(2), signLook(0, palette)) << palette.name;
    EXPECT_EQ(look(0), signLook(0, palette)) << palette.name << ", the active one";
  }
}

TEST_F(SignLookTest, AnotherTextSizeIsOnEveryLabelAtOnce) {
  beginWithAllLabels();
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(label(place).view().font(), signFont(160)) << place;
  }
  store_.setSignTextSize(48);
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(label(place).view().font(), signFont(48)) << place;
  }
}

TEST_F(SignLookTest, SettingsOfAnotherKindReadAsTheirDefaults) {
  defaults_.set("SignTextSize", "large");
  defaults_.set("HeatPaletteName", 7);
  defaults_.set("SignSwipeAlpha", PropertyList::Array{});
  defaults_.set("ShowSignInSwipeMode", "maybe");
  defaults_.set("ShowSignAfterSelection", PropertyList::Dictionary{});
  defaults_.set("HeatMapSigns", "perhaps");
  defaults_.set("SpaceHeatRecency", PropertyList::Array{"embedded-space-2", 7});
  beginWithAllLabels();
  EXPECT_EQ(label(1).view().font(), signFont(160));
  EXPECT_EQ(look(1), signLook(0, ember()));
  EXPECT_EQ(alpha(1), 0.78);
  controller_->showAll();
  advance(500);
  EXPECT_EQ(alpha(1), 1.0);
}

TEST_F(SignLookTest, AnUnknownPaletteIsTheFirst) {
  defaults_.set("HeatPaletteName", "Lava");
  begin();
  EXPECT_EQ(look(0), signLook(0, ember()));
}

TEST_F(SignLookTest, ARefreshThatChangesNothingTouchesNoView) {
  SpaceHeatTracker::shared().start();
  beginWithAllLabels();
  engage();
  std::vector<int> before;
  for (std::size_t place = 0; place < 4; ++place)
    before.push_back(label(place).view().changeCount());
  NotificationCenter::defaultCenter().post(SpaceHeatTracker::didChange);
  NotificationCenter::defaultCenter().post(PreferencesStore::didChange);
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(label(place).view().changeCount(), before[place]) << place;
  }
}

TEST_F(SignLookTest, TheNameIsTheTextAndFollowsARename) {
  beginWithAllLabels(2);
  EXPECT_EQ(label(1).view().text(), "Desktop 2");
  for (const std::string_view name :
       {"Mail", "שלום عالم", "👩‍👩‍👧 Family 🏡", "a\nb"}) {
    manager_.setName(name, manager_.spaces().at(1));
    EXPECT_EQ(label(1).view().text(), name);
  }
}

}  // namespace
}  // namespace vembrix
