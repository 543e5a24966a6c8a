#include <gmock/gmock.h>

#include <limits>

#include "support/SettingsPages.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using SpaceType = EmbeddedDesktop::SpaceType;

constexpr Srgb kPicked{0.25, 0.5, 0.75, 0.5};

const ColorPalette& paletteNamed(std::string_view name) {
  return *std::ranges::find(PreferencesStore::palettes(), name, &ColorPalette::name);
}

class ColorsTabTest : public SettingsPages {
 protected:
  std::vector<Color> wellColors() {
    std::vector<Color> colors;
    for (const ColorGrid::Well& well : window().colorGrid().wells) colors.push_back(well.color);
    return colors;
  }
  std::vector<std::string> wellNames() {
    std::vector<std::string> names;
    for (const ColorGrid::Well& well : window().colorGrid().wells) names.push_back(well.name);
    return names;
  }
  std::string uuidAt(std::size_t index) { return SpaceManager::shared().spaces().at(index).uuid; }
  SpaceColorConfig configAt(std::size_t index) { return store_.colorConfig(uuidAt(index)); }
};

TEST_F(ColorsTabTest, TheColorModeIsStoredByItsRawValue) {
  open("Colors");
  EXPECT_THAT(window().popup("Color Mode:").items, ElementsAre("Text Color", "Background Color"));
  EXPECT_EQ(window().selectedItem("Color Mode:"), "Background Color");
  Posts posts;
  window().choose("Color Mode:", "Text Color");
  EXPECT_EQ(defaults_.object("ColorMode"), PropertyList("colorForeground"));
  EXPECT_EQ(open("Colors").selectedItem("Color Mode:"), "Text Color");
  window().choose("Color Mode:", "Background Color");
  EXPECT_EQ(defaults_.object("ColorMode"), PropertyList("colorBackground"));
  EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange, PreferencesStore::didChange));
}

TEST_F(ColorsTabTest, AnUnknownColorModeShowsBackgroundColor) {
  defaults_.set("ColorMode", "ColorForeground");
  EXPECT_EQ(open("Colors").selectedItem("Color Mode:"), "Background Color");
}

TEST_F(ColorsTabTest, AnItemBeyondTheTwoModesOrThePalettesWritesNothing) {
  open("Colors");
  Posts posts;
  window().popup("Color Mode:").onSelect(2, "Third");
  window().popup("Palette:").onSelect(5, "Sixth");
  EXPECT_TRUE(defaults_.object("ColorMode").isNull());
  EXPECT_TRUE(defaults_.object("SpaceColors").isNull());
  EXPECT_THAT(posts.names(), IsEmpty());
}

TEST_F(ColorsTabTest, ChoosingAPaletteRecoloursEveryDesktopAndReopeningShowsPastelAgain) {
  setDesktops(3);
  open("Colors");
  EXPECT_THAT(window().popup("Palette:").items,
              ElementsAre("B&W", "Vivid", "Pastel", "Earth", "Neon"));
  EXPECT_EQ(window().selectedItem("Palette:"), "Pastel");
  for (const ColorPalette& palette : PreferencesStore::palettes()) {
    Posts posts;
    window().choose("Palette:", palette.name);
    EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(configAt(i).background, palette.colors[i]);
  }
  open("Colors");
  EXPECT_EQ(window().selectedItem("Palette:"), "Pastel");
  const auto& neon = paletteNamed("Neon").colors;
  EXPECT_THAT(wellColors(),
              ElementsAre(Color(neon[0].srgb()), Color(neon[1].srgb()), Color(neon[2].srgb())));
}

TEST_F(ColorsTabTest, ThePalettesColoursAndThenThoseOfTheDesktopsAreOfferedFirst) {
  setDesktops(2);
  open("Colors");
  const auto offered = [&] {
    std::vector<Color> colors;
    for (const auto& swatch : window().colorGrid().swatches()) colors.push_back(swatch.color);
    return colors;
  };
  const auto colorsOf = [](std::string_view name) {
    std::vector<Color> colors;
    for (const CodableColor& color : paletteNamed(name).colors) colors.emplace_back(color.srgb());
    return colors;
  };
  EXPECT_EQ(offered(), colorsOf("Pastel")) << "the desktops have colours of it";
  window().pickColor(1, kPicked);
  std::vector<Color> expected = colorsOf("Pastel");
  expected.emplace_back(kPicked);
  EXPECT_EQ(offered(), expected);
  window().choose("Palette:", "Neon");
  EXPECT_EQ(offered(), colorsOf("Neon"));
  EXPECT_EQ(window().colorGrid().swatches().front().name, "Neon 1");
}

TEST_F(ColorsTabTest, WithTheColorModeUnsetTheWellsShowAndEditBackgroundColours) {
  setDesktops(2);
  const CodableColor text{0.1, 0.2, 0.3, 1};
  const CodableColor ground{0.7, 0.8, 0.9, 1};
  store_.setSpaceColors({{uuidAt(0), {text, ground}}});
  open("Colors");
  EXPECT_EQ(wellColors()[0], Color(ground.srgb()));
  Posts posts;
  window().pickColor(0, kPicked);
  EXPECT_EQ(configAt(0), (SpaceColorConfig{text, CodableColor::of(kPicked)}));
  EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange));
}

TEST_F(ColorsTabTest, InTextModeTheWellsShowAndEditTextColours) {
  setDesktops(2);
  const CodableColor text{0.1, 0.2, 0.3, 1};
  const CodableColor ground{0.7, 0.8, 0.9, 1};
  store_.setSpaceColors({{uuidAt(1), {text, ground}}});
  store_.setColorMode(ColorMode::ColorForeground);
  open("Colors");
  EXPECT_EQ(wellColors()[1], Color(text.srgb()));
  window().pickColor(1, kPicked);
  EXPECT_EQ(configAt(1), (SpaceColorConfig{CodableColor::of(kPicked), ground}));
}

TEST_F(ColorsTabTest, AWellFollowsTheModeOfTheMomentItIsUsedIn) {
  setDesktops(1);
  open("Colors");
  window().choose("Color Mode:", "Text Color");
  const CodableColor ground = configAt(0).background;
  window().pickColor(0, kPicked);
  EXPECT_EQ(configAt(0), (SpaceColorConfig{CodableColor::of(kPicked), ground}));
}

TEST_F(ColorsTabTest, AColourThatSrgbCannotExpressChangesNothing) {
  setDesktops(2);
  open("Colors");
  Posts posts;
  window().pickColor(0, Color(SystemColor::Label));
  EXPECT_TRUE(defaults_.object("SpaceColors").isNull());
  EXPECT_THAT(posts.names(), IsEmpty());
}

TEST_F(ColorsTabTest, TheColoursOfOtherDesktopsAndOfVanishedOnesStay) {
  setDesktops(2);
  const SpaceColorConfig stored{{0.1, 0.1, 0.1, 1}, {0.2, 0.2, 0.2, 1}};
  store_.setSpaceColors({{"vanished", stored}, {uuidAt(1), stored}});
  open("Colors");
  window().pickColor(0, kPicked);
  EXPECT_THAT(store_.spaceColors(), SizeIs(3));
  EXPECT_EQ(store_.colorConfig("vanished"), stored);
  EXPECT_EQ(configAt(1), stored);
}

TEST_F(ColorsTabTest, OnlyDesktopsAreListedWithTheirNamesFromAllDisplays) {
  desktop_.setSpaceCount(1);
  desktop_.addSpace("Main", SpaceType::FullScreen);
  desktop_.addSpace("Main", SpaceType::Desktop, "work");
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 800, 600}});
  SpaceManager::shared().reload();
  SpaceManager::shared().setName("Work", SpaceManager::shared().spaces()[2]);
  open("Colors");
  EXPECT_THAT(wellNames(), ElementsAre("Desktop 1", "Work", "Desktop 1"));
  window().pickColor(1, kPicked);
  EXPECT_EQ(store_.colorConfig("work").background, CodableColor::of(kPicked));
}

TEST_F(ColorsTabTest, WithoutSpacesTheGridIsEmptyAndNothingCanBeEdited) {
  setDesktops(0);
  open("Colors");
  EXPECT_THAT(window().colorGrid().wells, IsEmpty());
  window().colorGrid().onChange(0, kPicked);
  EXPECT_TRUE(defaults_.object("SpaceColors").isNull());
}

TEST_F(ColorsTabTest, AnOddNumberOfDesktopsLeavesOneNameAndOneWellInTheLastRow) {
  for (const std::size_t count : {1U, 3U, 5U}) {
    setDesktops(count);
    open("Colors");
    EXPECT_THAT(window().colorGrid().wells, SizeIs(count));
    EXPECT_EQ(window().colorGrid().wells.size() % form_metrics::kPairsPerRow, 1U);
    window().pickColor(static_cast<int>(count) - 1, kPicked);
    EXPECT_EQ(configAt(count - 1).background, CodableColor::of(kPicked));
  }
}

TEST_F(ColorsTabTest, HundredsOfDesktopsEachHaveTheirWell) {
  setDesktops(300);
  open("Colors");
  EXPECT_THAT(window().colorGrid().wells, SizeIs(300));
  EXPECT_EQ(window().colorGrid().wells.back().name, "Desktop 300");
  window().pickColor(299, kPicked);
  EXPECT_EQ(configAt(299).background, CodableColor::of(kPicked));
  EXPECT_THAT(store_.spaceColors(), SizeIs(1));
}

TEST_F(ColorsTabTest, TheWellOfADesktopThatWasRemovedWhileTheWindowIsOpenChangesNothing) {
  setDesktops(4);
  open("Colors");
  setDesktops(2);
  const PropertyList before = defaults_.readDomain(EmbeddedUserDefaults::kApplicationDomain);
  Posts posts;
  window().pickColor(3, kPicked);
  window().pickColor(2, kPicked);
  EXPECT_EQ(defaults_.readDomain(EmbeddedUserDefaults::kApplicationDomain), before);
  EXPECT_THAT(posts.names(), IsEmpty());
}

TEST_F(ColorsTabTest, AWellBeforeTheFirstOrBeyondTheLastChangesNothing) {
  setDesktops(2);
  const auto change = open("Colors").colorGrid().onChange;
  Posts posts;
  for (const int index : {-1, 2, 1000, std::numeric_limits<int>::min()}) change(index, kPicked);
  EXPECT_TRUE(defaults_.object("SpaceColors").isNull());
  EXPECT_THAT(posts.names(), IsEmpty());
}

TEST_F(ColorsTabTest, OpeningTheWindowReadsTheSpacesAgain) {
  setDesktops(2);
  open("Colors");
  desktop_.addSpace("Main");
  EXPECT_THAT(window().colorGrid().wells, SizeIs(2));
  open("Colors");
  EXPECT_THAT(window().colorGrid().wells, SizeIs(3));
}

TEST_F(ColorsTabTest, TheGridStandsAsItIsMeasured) {
  EXPECT_EQ(form_metrics::kWellSize, (Size{44, 24}));
  EXPECT_EQ(form_metrics::kWellColumnSpacing, 12);
  EXPECT_EQ(form_metrics::kWellRowSpacing, 12);
  EXPECT_EQ(form_metrics::kSecondPairPadding, 28);
  EXPECT_EQ(open("Colors").colorGrid().nameStyle.font, Font{.size = 13});
}

}  // namespace
}  // namespace vembrix
