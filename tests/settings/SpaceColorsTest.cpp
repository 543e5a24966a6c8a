#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "platform/Json.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "support/AllocationCounter.h"
#include "support/Posts.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CodableColor kPink{1.0, 0.71, 0.76, 1.0};
constexpr CodableColor kBlue{0.69, 0.83, 1.0, 1.0};
constexpr CodableColor kGreen{0.72, 0.96, 0.72, 1.0};
constexpr CodableColor kCustom{0.1, 0.2, 0.3, 0.4};

class SpaceColorsTest : public testing::Test {
 protected:
  void setDesktops(std::size_t count) {
    desktop_.setSpaceCount(count);
    SpaceManager::shared().reload();
  }

  void storeJson(std::string_view text) {
    defaults_.set("SpaceColors", PropertyList::Data(text.begin(), text.end()));
  }

  std::string uuidAt(std::size_t place) { return SpaceManager::shared().spaces().at(place).uuid; }

  static const ColorPalette& palette(std::string_view name) {
    for (const ColorPalette& palette : PreferencesStore::palettes()) {
      if (palette.name == name) return palette;
    }
    throw std::invalid_argument("no such palette");
  }

  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
};

TEST_F(SpaceColorsTest, WithoutStoredColorsDesktopsTakeThePastelColorsOfTheirPlaces) {
  setDesktops(3);
  EXPECT_EQ(store_.colorConfig(uuidAt(0)), (SpaceColorConfig{kPink, kPink}));
  EXPECT_EQ(store_.colorConfig(uuidAt(1)), (SpaceColorConfig{kBlue, kBlue}));
  EXPECT_EQ(store_.colorConfig(uuidAt(2)), (SpaceColorConfig{kGreen, kGreen}));
}

TEST_F(SpaceColorsTest, FullScreenSpacesAndUnknownUuidsTakeTheFirstPastelColor) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen, "full");
  SpaceManager::shared().reload();
  EXPECT_EQ(store_.colorConfig("full").background, kPink);
  EXPECT_EQ(store_.colorConfig("nobody").background, kPink);
  setDesktops(0);
  EXPECT_EQ(store_.colorConfig("embedded-space-2").background, kPink);
}

TEST_F(SpaceColorsTest, FullScreenSpacesTakeNoPlace) {
  const auto full = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.moveSpace(full, 0);
  SpaceManager::shared().reload();
  EXPECT_EQ(store_.colorConfig(uuidAt(1)).background, kPink);
}

TEST_F(SpaceColorsTest, TheSeventeenthDesktopTakesTheFirstColorAgain) {
  setDesktops(17);
  EXPECT_EQ(store_.colorConfig(uuidAt(16)).background, kPink);
}

TEST_F(SpaceColorsTest, DefaultColorsMoveWithTheOrderOfTheDesktops) {
  setDesktops(3);
  const std::string third = uuidAt(2);
  desktop_.moveSpace(desktop_.spaceAt(2), 0);
  SpaceManager::shared().reload();
  EXPECT_EQ(store_.colorConfig(third).background, kPink);
}

TEST_F(SpaceColorsTest, StoredColorsAreReadWhateverFormTheNumbersHave) {
  storeJson(R"({ "A" : {"foreground":{"red":1,"green":0,"blue":0.5,"alpha":1e0},
                 "background":{"alpha":0.69,"blue":0,"green":0,"red":-2.5,"more":"ignored"},
                 "extra":null} })");
  EXPECT_EQ(store_.colorConfig("A"), (SpaceColorConfig{{1, 0, 0.5, 1}, {-2.5, 0, 0, 0.69}}));
}

TEST_F(SpaceColorsTest, OneEntryWithoutAlphaSpoilsTheWholeValue) {
  storeJson(R"({"A":{"foreground":{"red":1,"green":0,"blue":0,"alpha":1},
                     "background":{"red":1,"green":0,"blue":0,"alpha":1}},
                "B":{"foreground":{"red":1,"green":0,"blue":0},
                     "background":{"red":1,"green":0,"blue":0,"alpha":1}}})");
  EXPECT_THAT(store_.spaceColors(), IsEmpty());
}

TEST_F(SpaceColorsTest, UndecodableValuesReadAsEmpty) {
  for (const char* text : {"", "{", "[]", "null", "7", R"({"A":7})", R"({"A":{"foreground":{}}})",
                           R"({"A":{"foreground":{"red":"1","green":0,"blue":0,"alpha":1},
                 "background":{"red":1,"green":0,"blue":0,"alpha":1}}})",
                           R"({"A":{"foreground":{"red":true,"green":0,"blue":0,"alpha":1},
                 "background":{"red":1,"green":0,"blue":0,"alpha":1}}})"}) {
    storeJson(text);
    EXPECT_THAT(store_.spaceColors(), IsEmpty()) << text;
  }
}

TEST_F(SpaceColorsTest, TheNextWriteReplacesBadBytes) {
  storeJson("{broken");
  store_.setSpaceColors({{"A", {kCustom, kPink}}});
  EXPECT_EQ(store_.spaceColors(), (SpaceColors{{"A", {kCustom, kPink}}}));
}

TEST_F(SpaceColorsTest, ColorsAreStoredAsJsonInData) {
  store_.setSpaceColors({{"A", {kCustom, kPink}}});
  const PropertyList stored = defaults_.object("SpaceColors");
  ASSERT_NE(stored.asData(), nullptr);
  const auto json =
      decodeJson({reinterpret_cast<const char*>(stored.asData()->data()), stored.asData()->size()});
  ASSERT_TRUE(json);
  EXPECT_EQ((*json)["A"]["foreground"]["blue"].number(), 0.3);
  EXPECT_EQ((*json)["A"]["background"]["alpha"].number(), 1.0);
  EXPECT_EQ((*json)["A"]["foreground"].asDictionary()->size(), 4U);
  EXPECT_EQ((*json)["A"].asDictionary()->size(), 2U);
}

TEST_F(SpaceColorsTest, WritingColorsPostsOnce) {
  Posts posts;
  store_.setSpaceColors({});
  EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange));
  EXPECT_THAT(store_.spaceColors(), IsEmpty());
}

TEST_F(SpaceColorsTest, ColorsThatCannotBeEncodedLeaveTheStoredOnesButArePosted) {
  store_.setSpaceColors({{"A", {kCustom, kPink}}});
  Posts posts;
  store_.setSpaceColors({{"B", {{std::numeric_limits<double>::infinity(), 0, 0, 1}, kPink}}});
  EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange));
  EXPECT_EQ(store_.spaceColors(), (SpaceColors{{"A", {kCustom, kPink}}}));
}

TEST_F(SpaceColorsTest, VividInBackgroundModeKeepsACustomForeground) {
  setDesktops(3);
  store_.setSpaceColors({{uuidAt(2), {kCustom, kPink}}});
  store_.applyPalette(palette("Vivid"));
  EXPECT_EQ(store_.colorConfig(uuidAt(2)), (SpaceColorConfig{kCustom, {0.3, 0.69, 0.31, 1.0}}));
  EXPECT_EQ(store_.colorConfig(uuidAt(1)), (SpaceColorConfig{kBlue, {0.13, 0.59, 0.95, 1.0}}));
}

TEST_F(SpaceColorsTest, APaletteInForegroundModeKeepsTheBackgrounds) {
  setDesktops(2);
  store_.setColorMode(ColorMode::ColorForeground);
  store_.applyPalette(palette("Neon"));
  EXPECT_EQ(store_.colorConfig(uuidAt(0)), (SpaceColorConfig{{1.0, 0.07, 0.57, 1.0}, kPink}));
  EXPECT_EQ(store_.colorConfig(uuidAt(1)), (SpaceColorConfig{{0.0, 1.0, 0.94, 1.0}, kBlue}));
}

TEST_F(SpaceColorsTest, APaletteOnEighteenDesktopsStartsAgainAtTheSeventeenth) {
  setDesktops(18);
  const ColorPalette& earth = palette("Earth");
  store_.applyPalette(earth);
  EXPECT_EQ(store_.colorConfig(uuidAt(15)).background, earth.colors[15]);
  EXPECT_EQ(store_.colorConfig(uuidAt(16)).background, earth.colors[0]);
  EXPECT_EQ(store_.colorConfig(uuidAt(17)).background, earth.colors[1]);
}

TEST_F(SpaceColorsTest, APaletteLeavesVanishedAndFullScreenSpacesAlone) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen, "full");
  SpaceManager::shared().reload();
  store_.setSpaceColors({{"gone", {kCustom, kCustom}}, {"full", {kCustom, kCustom}}});
  store_.applyPalette(palette("Vivid"));
  EXPECT_EQ(store_.colorConfig("gone"), (SpaceColorConfig{kCustom, kCustom}));
  EXPECT_EQ(store_.colorConfig("full"), (SpaceColorConfig{kCustom, kCustom}));
  EXPECT_EQ(store_.spaceColors().size(), 6U);
}

TEST_F(SpaceColorsTest, APaletteIsOneWriteAndOnePost) {
  setDesktops(4);
  const int writes = defaults_.writeCount();
  Posts posts;
  store_.applyPalette(palette("Vivid"));
  EXPECT_EQ(defaults_.writeCount(), writes + 1);
  EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange));
}

TEST_F(SpaceColorsTest, APaletteWithoutColorsEndsTheProgram) {
  EXPECT_DEATH(store_.applyPalette({"Empty", {}}), "palette without colours");
}

TEST_F(SpaceColorsTest, AskingForStoredColorsAgainAllocatesNothing) {
  setDesktops(4);
  store_.applyPalette(palette("Vivid"));
  const std::string uuid = uuidAt(3);
  (void)store_.colorConfig(uuid);
  const std::size_t before = allocationCount();
  const SpaceColorConfig config = store_.colorConfig(uuid);
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(config.background, (CodableColor{1.0, 0.6, 0.0, 1.0}));
}

TEST(CodableColorTest, NeedsEveryComponentAsANumber) {
  const PropertyList::Dictionary whole = {
      {"red", 0.1}, {"green", 0.2}, {"blue", 0.3}, {"alpha", 1}};
  EXPECT_EQ(decodeCodableColor(whole), (CodableColor{0.1, 0.2, 0.3, 1}));
  for (const char* component : {"red", "green", "blue", "alpha"}) {
    PropertyList::Dictionary part = whole;
    part.insert_or_assign(component, "0.5");
    EXPECT_EQ(decodeCodableColor(part), std::nullopt) << component;
    part.erase(component);
    EXPECT_EQ(decodeCodableColor(part), std::nullopt) << component;
  }
}

TEST(SpaceColorConfigTest, NeedsBothColors) {
  const SpaceColorConfig config{{0.1, 0.2, 0.3, 1}, {0.4, 0.5, 0.6, 1}};
  const PropertyList whole = encode(config);
  EXPECT_EQ(decodeSpaceColorConfig(whole), config);
  for (const char* color : {"foreground", "background"}) {
    PropertyList::Dictionary part = *whole.asDictionary();
    part.erase(color);
    EXPECT_EQ(decodeSpaceColorConfig(part), std::nullopt) << color;
  }
}

TEST(CodableColorTest, ConvertsToAndFromSrgbComponents) {
  const Srgb srgb{0.1, 2.0, -1.0, 0.5};
  EXPECT_EQ(CodableColor::of(srgb).srgb(), srgb);
}

}  // namespace
}  // namespace vembrix
