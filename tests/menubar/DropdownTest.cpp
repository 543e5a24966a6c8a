#include "menubar/DropdownTest.h"

#include <gmock/gmock.h>

#include <string>

#include "menubar/DropdownContent.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using Array = PropertyList::Array;
using SpaceType = EmbeddedDesktop::SpaceType;

// What it holds

TEST_F(DropdownTest, HasARowPerDesktopThenPreferencesThenQuit) {
  EXPECT_THAT(open().titles(), ElementsAre("Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4", "-",
                                           "Preferences…", "-", "Quit Vembrix"));
  EXPECT_THAT(menu().rows(), SizeIs(4));
}

TEST_F(DropdownTest, IsEmptyUntilItFirstOpens) {
  EXPECT_THAT(menu().items(), SizeIs(0));
}

TEST_F(DropdownTest, TheCommandsHaveTheUsualKeys) {
  open();
  EXPECT_EQ(menu().command("Preferences…")->keyEquivalent, ",");
  EXPECT_EQ(menu().command("Quit Vembrix")->keyEquivalent, "q");
}

TEST_F(DropdownTest, WithoutDesktopsItHoldsOnlyTheCommands) {
  desktop_.setSpaceCount(0);
  EXPECT_THAT(open().titles(), ElementsAre("-", "Preferences…", "-", "Quit Vembrix"));
}

TEST_F(DropdownTest, HoldsHundredsOfDesktops) {
  desktop_.setSpaceCount(300);
  EXPECT_THAT(open().rows(), SizeIs(300));
  EXPECT_EQ(row(299).state().label, "Desktop 300");
  EXPECT_EQ(dot(16).stroke, Color(kPink)) << "sixteen default colours in turn";
}

TEST_F(DropdownTest, FullScreenSpacesGetNoRow) {
  desktop_.addSpace("Main", SpaceType::FullScreen);
  desktop_.addSpace("Main");
  EXPECT_THAT(open().titles(), ElementsAre("Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4",
                                           "Desktop 5", "-", "Preferences…", "-", "Quit Vembrix"));
}

TEST_F(DropdownTest, InAFullScreenSpaceNoRowIsTheCurrentOne) {
  desktop_.activate(desktop_.addSpace("Main", SpaceType::FullScreen));
  open();
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(row(place).content().dotDescription, "") << place;
  }
}

TEST_F(DropdownTest, ListsTheDesktopsOfAllDisplays) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 800, 600}});
  EXPECT_THAT(open().titles(), ElementsAre("Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4",
                                           "Desktop 1", "-", "Preferences…", "-", "Quit Vembrix"));
}

TEST_F(DropdownTest, ADesktopAddedWhileTheMenuWasClosedIsListedOnTheNextOpening) {
  EXPECT_THAT(open().rows(), SizeIs(4));
  menu().close();
  desktop_.addSpace("Main");
  EXPECT_THAT(open().rows(), SizeIs(5));
}

TEST_F(DropdownTest, ADesktopRemovedWhileTheMenuWasClosedIsGoneOnTheNextOpening) {
  open();
  menu().close();
  desktop_.removeSpace(desktop_.spaceAt(1));
  EXPECT_THAT(open().rows(), SizeIs(3));
}

TEST_F(DropdownTest, TheSpacesAreReadBeforeAnythingIsShown) {
  desktop_.addSpace("Main");
  desktop_.overrideActiveSpace(desktop_.spaceAt(4));
  open();
  EXPECT_EQ(row(4).content().dotDescription, "current");
  EXPECT_EQ(strip(), " Desktop 5 ");
}

TEST_F(DropdownTest, AThousandOpeningsLeaveOneSetOfRows) {
  for (int i = 0; i < 1000; ++i) {
    open();
    row(1).hover();
    row(1).clickPencil();
    row(1).type("x");
  }
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 4);
  EXPECT_EQ(queue_.pendingCount(), 0U);
  menu().close();
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 4) << "until it opens again";
  controller_.reset();
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 0);
}

// Dots and names

TEST_F(DropdownTest, TheActiveDesktopHasADiscAndASemiboldName) {
  desktop_.activate(desktop_.spaceAt(1));
  open();
  EXPECT_EQ(dot(1).fill, Color(kBlue));
  EXPECT_EQ(dot(1).stroke, std::nullopt);
  EXPECT_EQ(row(1).content().font.weight, Font::Weight::Semibold);
  EXPECT_EQ(row(1).content().dotDescription, "current");
  EXPECT_EQ(dot(0).fill, std::nullopt);
  EXPECT_EQ(dot(0).stroke, Color(kPink));
  EXPECT_EQ(row(0).content().font.weight, Font::Weight::Regular);
}

TEST_F(DropdownTest, TheDotHasTheColorOfTheModeWithoutAnyAdjustment) {
  const Srgb black{0.01, 0.02, 0.03, 0.5};
  const Srgb white{0.99, 0.98, 0.97, 1};
  store_.setSpaceColors({{uuid(0), {CodableColor::of(black), CodableColor::of(white)}}});
  open();
  EXPECT_EQ(dot(0).fill, Color(white));
  desktop_.setAppearance(Appearance::Dark);
  store_.setColorMode(ColorMode::ColorForeground);
  open();
  EXPECT_EQ(dot(0).fill, Color(black));
}

TEST_F(DropdownTest, AColorModeOfTheWrongKindShowsTheBackground) {
  store_.setSpaceColors({{uuid(0), {{1, 0, 0, 1}, {0, 1, 0, 1}}}});
  for (const PropertyList& stored :
       {PropertyList(1), PropertyList(std::string("ColorForeground")), PropertyList(Array{})}) {
    defaults_.set("ColorMode", stored);
    open();
    EXPECT_EQ(dot(0).fill, Color(Srgb{0, 1, 0, 1}));
  }
}

TEST_F(DropdownTest, StoredColorsThatCannotBeReadShowTheDefaultOnes) {
  for (const PropertyList& stored : {PropertyList(std::string("red")), PropertyList(7),
                                     PropertyList(PropertyList::Data{0x7b})}) {
    defaults_.set("SpaceColors", stored);
    open();
    EXPECT_EQ(dot(0).fill, Color(kPink));
  }
}

TEST_F(DropdownTest, NamesOfAnyScriptAreShown) {
  const std::string rightToLeft = "שולחן العمل";
  const std::string emoji = "👩‍👩‍👧‍👦🛠";
  defaults_.set("SpaceNames", PropertyList::Dictionary{{uuid(0), rightToLeft}, {uuid(1), emoji}});
  open();
  rename(2, rightToLeft);
  rename(3, emoji);
  EXPECT_EQ(row(2).state().label, rightToLeft);
  EXPECT_EQ(row(3).state().label, emoji);
  open();
  EXPECT_EQ(row(2).state().label, rightToLeft);
  EXPECT_EQ(row(3).state().label, emoji);
}

// Heat

TEST_F(DropdownTest, AHeatOfExactlyFiveHundredthsGlowsNotAndOfSixGlowsInTheRimsColor) {
  EXPECT_EQ(heatGlow(0.05), std::nullopt);
  EXPECT_EQ(heatGlow(0.06), Color(Srgb{1.0, 0.64, 0.24, 0.06}));
  EXPECT_EQ(heatGlow(0.0), std::nullopt);
}

TEST_F(DropdownTest, WarmDesktopsGlowAsWarmAsTheyAreAndTheCurrentOneDoesNot) {
  setRecency({uuid(0), uuid(2), uuid(1)});
  open();
  EXPECT_EQ(row(0).content().dotDescription, "current");
  EXPECT_EQ(dot(0).fill, Color(kPink)) << "a disc, not a glow";
  EXPECT_EQ(dot(2).fill, Color(Srgb{1.0, 0.64, 0.24, 1.0}));
  EXPECT_EQ(dot(1).fill, Color(Srgb{1.0, 0.64, 0.24, 0.78}));
  EXPECT_EQ(dot(3).fill, std::nullopt);
  EXPECT_EQ(row(2).content().dotDescription, "recently used");
  EXPECT_EQ(row(3).content().dotDescription, "");
}

TEST_F(DropdownTest, HeatThatIsTurnedOffGlowsNowhere) {
  setRecency({uuid(2), uuid(1)});
  store_.setHeatMapSigns(false);
  open();
  EXPECT_EQ(dot(2).fill, std::nullopt);
}

TEST_F(DropdownTest, TheMonoRimIsHalvedInALightThemeBeforeTheHeatIsItsAlpha) {
  store_.setHeatPaletteName("Mono");
  EXPECT_EQ(heatGlow(0.6), Color(Srgb{0.5, 0.5, 0.5, 0.6}));
  store_.setThemeName("Coral");
  EXPECT_EQ(heatGlow(0.6), Color(Srgb{1, 1, 1, 0.6})) << "a dark theme";
}

TEST_F(DropdownTest, AThemeWithoutADarknessOfItsOwnTakesTheSystems) {
  store_.setHeatPaletteName("Mono");
  store_.setThemeName("Frost");
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{0.5, 0.5, 0.5, 1}));
  desktop_.setAppearance(Appearance::Dark);
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{1, 1, 1, 1}));
  desktop_.setAppearance(std::nullopt);
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{0.5, 0.5, 0.5, 1})) << "a system that does not tell";
}

TEST_F(DropdownTest, AHeatPaletteOfTheWrongKindIsTheFirst) {
  defaults_.set("HeatPaletteName", Array{});
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{1.0, 0.64, 0.24, 1.0}));
}

// Themes

TEST_F(DropdownTest, TheAppearanceIsThatOfTheThemeAtTheOpening) {
  EXPECT_EQ(open().appearance(), Appearance::Light);
  // Written by another program, and therefore without a notification.
  defaults_.set("ThemeName", std::string("Coral"));
  EXPECT_EQ(open().appearance(), Appearance::Dark);
  defaults_.set("ThemeName", std::string("Frost"));
  EXPECT_EQ(open().appearance(), std::nullopt);
  defaults_.set("ThemeName", PropertyList(3));
  EXPECT_EQ(open().appearance(), Appearance::Light) << "none is stored that could be read";
}

TEST_F(DropdownTest, WithTheStockThemeTheCommandsKeepTheMenusFont) {
  store_.setThemeName("Stock");
  open();
  EXPECT_EQ(menu().command("Preferences…")->font, std::nullopt);
  EXPECT_EQ(menu().command("Quit Vembrix")->font, std::nullopt);
}

TEST_F(DropdownTest, SelectedCommandsHaveTheTintOfSelectedRowsAndWithStockTheSystems) {
  for (const AppTheme& theme : AppTheme::all()) {
    PreferencesStore::shared().setThemeName(theme.name);
    open();
    for (const char* title : {"Preferences…", "Quit Vembrix"}) {
      const std::optional<Color> tint = menu().command(title)->highlight;
      if (theme.name == "Stock") {
        EXPECT_EQ(tint, std::nullopt);
      } else {
        EXPECT_EQ(tint, selectionTint(theme));
        EXPECT_EQ(tint->alpha(), 0.16);
      }
    }
  }
}

TEST_F(DropdownTest, WithAMonospacedThemeTheCommandsAreMonospaced) {
  store_.setThemeName("Paper");
  open();
  const Font mono{Font::Design::Monospaced, Font::Weight::Regular, {}};
  EXPECT_EQ(menu().command("Preferences…")->font, mono);
  EXPECT_EQ(menu().command("Quit Vembrix")->font, mono);
}

TEST_F(DropdownTest, WithAnyOtherThemeTheCommandsHaveTheSystemsFont) {
  const Font system{Font::Design::System, Font::Weight::Regular, {}};
  for (const AppTheme& theme : AppTheme::all()) {
    if (theme.name == "Stock" || theme.usesMonoFont) continue;
    store_.setThemeName(theme.name);
    open();
    EXPECT_EQ(menu().command("Preferences…")->font, system) << theme.name;
    EXPECT_EQ(menu().command("Quit Vembrix")->font, system) << theme.name;
  }
}

}  // namespace
}  // namespace vembrix
