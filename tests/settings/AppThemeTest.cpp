#include "settings/AppTheme.h"

#include <gmock/gmock.h>

#include "settings/PreferencesStore.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using Navigation = AppTheme::Navigation;

const AppTheme& themeNamed(std::string_view name) {
  for (const AppTheme& theme : AppTheme::all()) {
    if (theme.name == name) return theme;
  }
  throw std::invalid_argument("no such theme");
}

TEST(AppThemeTest, ThereAreSevenThemesInTheirOrder) {
  std::vector<std::string> names;
  for (const AppTheme& theme : AppTheme::all()) names.push_back(theme.name);
  EXPECT_THAT(names,
              ElementsAre("Stock", "Alpine", "Coral", "Paper", "Graphite", "Sorbet", "Frost"));
}

TEST(AppThemeTest, WithNoStoredNameTheThemeIsAlpineAndNotStock) {
  EXPECT_EQ(PreferencesStore::shared().theme().name, "Alpine");
}

TEST(AppThemeTest, AStoredNameThatMatchesNoThemeIsStock) {
  PreferencesStore& store = PreferencesStore::shared();
  for (const char* name : {"alpine", "", "Midnight", "Alpine ", "Älpine"}) {
    store.setThemeName(name);
    EXPECT_EQ(store.theme().name, "Stock") << name;
  }
}

TEST(AppThemeTest, StockIsTheFirstOfAll) {
  EXPECT_EQ(AppTheme::stock().name, "Stock");
  EXPECT_EQ(AppTheme::stock(), AppTheme::all()[0]);
}

TEST(AppThemeTest, StockAndFrostFollowTheSystemAndTheOthersForceTheirs) {
  EXPECT_EQ(themeNamed("Stock").appearance(), std::nullopt);
  EXPECT_EQ(themeNamed("Frost").appearance(), std::nullopt);
  for (const char* light : {"Alpine", "Paper", "Sorbet"}) {
    EXPECT_EQ(themeNamed(light).appearance(), Appearance::Light) << light;
  }
  for (const char* dark : {"Coral", "Graphite"}) {
    EXPECT_EQ(themeNamed(dark).appearance(), Appearance::Dark) << dark;
  }
}

TEST(AppThemeTest, StockIsThePlainSystemLook) {
  const AppTheme& theme = themeNamed("Stock");
  EXPECT_EQ(theme.background, AppTheme::Background(AppTheme::Standard{}));
  EXPECT_EQ(theme.accent, Color(SystemColor::ControlAccent));
  EXPECT_EQ(theme.cardFill, std::nullopt);
  EXPECT_EQ(theme.cardStroke, std::nullopt);
  EXPECT_EQ(theme.cornerRadius, 6);
  EXPECT_EQ(theme.navigation, Navigation::Pills);
}

TEST(AppThemeTest, BackgroundsAreThoseOfTheTable) {
  const auto solid = [](double r, double g, double b) {
    return AppTheme::Background(AppTheme::Solid{Srgb{r, g, b}});
  };
  EXPECT_EQ(themeNamed("Alpine").background, solid(0.96, 0.965, 0.973));
  EXPECT_EQ(themeNamed("Coral").background, solid(0.1, 0.1, 0.11));
  EXPECT_EQ(themeNamed("Paper").background, solid(1, 1, 1));
  EXPECT_EQ(themeNamed("Graphite").background, solid(0.055, 0.055, 0.07));
  EXPECT_EQ(
      themeNamed("Sorbet").background,
      AppTheme::Background(AppTheme::Gradient{{Srgb{0.93, 0.89, 1.0}, Srgb{1.0, 0.91, 0.88}}}));
  EXPECT_EQ(themeNamed("Frost").background,
            AppTheme::Background(AppTheme::Vibrancy{AppTheme::Material::Sidebar}));
}

TEST(AppThemeTest, AccentsAndCardsAreThoseOfTheTable) {
  EXPECT_EQ(themeNamed("Alpine").accent, Color(Srgb{0.29, 0.56, 0.85}));
  EXPECT_EQ(themeNamed("Alpine").cardFill, Color(kWhite));
  EXPECT_EQ(themeNamed("Alpine").cardStroke, Color(Srgb{0, 0, 0, 0.06}));
  EXPECT_EQ(themeNamed("Coral").accent, Color(Srgb{1.0, 0.39, 0.39}));
  EXPECT_EQ(themeNamed("Coral").cardFill, Color(Srgb{1, 1, 1, 0.055}));
  EXPECT_EQ(themeNamed("Coral").cardStroke, Color(Srgb{1, 1, 1, 0.09}));
  EXPECT_EQ(themeNamed("Paper").accent, Color(Srgb{0.0, 0.64, 1.0}));
  EXPECT_EQ(themeNamed("Paper").cardFill, std::nullopt);
  EXPECT_EQ(themeNamed("Paper").cardStroke, std::nullopt);
  EXPECT_EQ(themeNamed("Graphite").accent, Color(Srgb{0.37, 0.42, 0.82}));
  EXPECT_EQ(themeNamed("Graphite").cardFill, Color(Srgb{1, 1, 1, 0.045}));
  EXPECT_EQ(themeNamed("Graphite").cardStroke, Color(Srgb{1, 1, 1, 0.07}));
  EXPECT_EQ(themeNamed("Sorbet").accent, Color(Srgb{0.58, 0.35, 0.84}));
  EXPECT_EQ(themeNamed("Sorbet").cardFill, Color(Srgb{1, 1, 1, 0.6}));
  EXPECT_EQ(themeNamed("Sorbet").cardStroke, Color(Srgb{1, 1, 1, 0.8}));
  EXPECT_EQ(themeNamed("Frost").accent, Color(Srgb{0.99, 0.26, 0.23}));
  EXPECT_EQ(themeNamed("Frost").cardFill, Color(SystemColor::TextBackground, 0.45));
  EXPECT_EQ(themeNamed("Frost").cardStroke, Color(SystemColor::Separator));
}

TEST(AppThemeTest, RadiiFontsAndNavigationAreThoseOfTheTable) {
  std::vector<double> radii;
  std::vector<Navigation> navigation;
  for (const AppTheme& theme : AppTheme::all()) {
    radii.push_back(theme.cornerRadius);
    navigation.push_back(theme.navigation);
    EXPECT_EQ(theme.usesMonoFont, theme.name == "Paper") << theme.name;
  }
  EXPECT_THAT(radii, ElementsAre(6, 10, 12, 3, 8, 16, 10));
  EXPECT_THAT(navigation, ElementsAre(Navigation::Pills, Navigation::Sidebar, Navigation::Pills,
                                      Navigation::Underline, Navigation::Sidebar, Navigation::Pills,
                                      Navigation::Sidebar));
}

TEST(AppThemeTest, AMonospacedThemeHasAMonospacedFont) {
  for (const AppTheme& theme : AppTheme::all()) {
    const auto design = theme.name == "Paper" ? Font::Design::Monospaced : Font::Design::System;
    EXPECT_EQ(theme.font(), (Font{design, Font::Weight::Regular, {}})) << theme.name;
    EXPECT_EQ(theme.font(Font::Weight::Semibold, 12.5),
              (Font{design, Font::Weight::Semibold, 12.5}))
        << theme.name;
  }
}

TEST(AppThemeTest, StockAloneIsPlain) {
  for (const AppTheme& theme : AppTheme::all()) {
    EXPECT_EQ(theme.isPlain(), theme.name == "Stock") << theme.name;
  }
  AppTheme theme;
  theme.name = "Stock";
  EXPECT_TRUE(theme.isPlain()) << "whatever else it says";
}

TEST(AppThemeTest, TheBlurbsAreOneSentenceEach) {
  std::vector<std::string> blurbs;
  for (const AppTheme& theme : AppTheme::all()) blurbs.push_back(theme.blurb);
  EXPECT_THAT(
      blurbs,
      ElementsAre("The standard macOS controls, exactly as before.",
                  "Airy and calm, after Things 3 \u2014 soft off-white, a single quiet blue, room "
                  "to breathe.",
                  "Dark launcher energy, after Raycast \u2014 near-black panel, coral highlights, "
                  "rounded cards.",
                  "Stark and typographic, after iA Writer \u2014 pure white, monospaced type, one "
                  "electric blue.",
                  "Precise and engineered, after Linear \u2014 ink black, indigo accent, hairline "
                  "card borders.",
                  "Playful and warm, after Arc \u2014 a lavender-to-peach wash with big friendly "
                  "corners.",
                  "Frosted glass, after Fantastical and the new macOS settings \u2014 translucent "
                  "panels, red accent."));
}

}  // namespace
}  // namespace vembrix
