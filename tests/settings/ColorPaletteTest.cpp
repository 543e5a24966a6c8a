#include "settings/ColorPalette.h"

#include <gmock/gmock.h>

#include "settings/HeatPalette.h"
#include "settings/PreferencesStore.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

TEST(ColorPaletteTest, ThereAreFivePalettesInTheirOrder) {
  std::vector<std::string> names;
  for (const ColorPalette& palette : PreferencesStore::palettes()) names.push_back(palette.name);
  EXPECT_THAT(names, ElementsAre("B&W", "Vivid", "Pastel", "Earth", "Neon"));
}

TEST(ColorPaletteTest, EveryPaletteHasSixteenOpaqueColors) {
  for (const ColorPalette& palette : PreferencesStore::palettes()) {
    EXPECT_EQ(palette.colors.size(), 16U) << palette.name;
    for (const CodableColor& color : palette.colors) EXPECT_EQ(color.alpha, 1.0) << palette.name;
  }
}

TEST(ColorPaletteTest, TheColorsOfEachPaletteAreItsOwn) {
  const auto& palettes = PreferencesStore::palettes();
  const auto color = [&](std::size_t palette, std::size_t index) {
    return palettes.at(palette).colors.at(index);
  };
  EXPECT_EQ(color(0, 0), (CodableColor{1.0, 1.0, 1.0, 1.0}));
  EXPECT_EQ(color(0, 7), (CodableColor{0.05, 0.05, 0.05, 1.0}));
  EXPECT_EQ(color(0, 15), (CodableColor{0.1, 0.1, 0.1, 1.0}));
  EXPECT_EQ(color(1, 0), (CodableColor{0.9, 0.22, 0.21, 1.0}));
  EXPECT_EQ(color(1, 8), (CodableColor{0.48, 0.71, 0.0, 1.0}));
  EXPECT_EQ(color(1, 15), (CodableColor{0.83, 0.18, 0.18, 1.0}));
  EXPECT_EQ(color(2, 1), (CodableColor{0.69, 0.83, 1.0, 1.0}));
  EXPECT_EQ(color(2, 15), (CodableColor{1.0, 0.82, 0.82, 1.0}));
  EXPECT_EQ(color(3, 2), (CodableColor{0.72, 0.53, 0.04, 1.0}));
  EXPECT_EQ(color(3, 15), (CodableColor{0.48, 0.45, 0.3, 1.0}));
  EXPECT_EQ(color(4, 0), (CodableColor{1.0, 0.07, 0.57, 1.0}));
  EXPECT_EQ(color(4, 15), (CodableColor{1.0, 0.25, 0.25, 1.0}));
}

TEST(HeatPaletteTest, ThereAreFourPalettesInTheirOrder) {
  std::vector<std::string> names;
  for (const HeatPalette& palette : PreferencesStore::heatPalettes()) names.push_back(palette.name);
  EXPECT_THAT(names, ElementsAre("Ember", "Ice", "Violet", "Mono"));
}

TEST(HeatPaletteTest, TheStoredNameSelectsThePalette) {
  PreferencesStore& store = PreferencesStore::shared();
  store.setHeatPaletteName("Ice");
  EXPECT_EQ(store.heatPalette().cold, (CodableColor{0.02, 0.04, 0.1, 0.78}));
  EXPECT_EQ(store.heatPalette().hot, (CodableColor{0.05, 0.36, 0.78, 0.88}));
  EXPECT_EQ(store.heatPalette().rim, (CodableColor{0.36, 0.9, 1.0, 1.0}));
  store.setHeatPaletteName("Mono");
  EXPECT_EQ(store.heatPalette().hot, (CodableColor{0.93, 0.93, 0.93, 0.92}));
}

TEST(HeatPaletteTest, AnUnknownNameIsEmber) {
  PreferencesStore& store = PreferencesStore::shared();
  for (const char* name : {"", "ice", "Lava"}) {
    store.setHeatPaletteName(name);
    EXPECT_EQ(store.heatPalette().name, "Ember");
    EXPECT_EQ(store.heatPalette().rim, (CodableColor{1.0, 0.64, 0.24, 1.0}));
  }
}

}  // namespace
}  // namespace vembrix
