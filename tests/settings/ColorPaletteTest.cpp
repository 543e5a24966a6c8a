#include "settings/ColorPalette.h"

#include <gmock/gmock.h>

#include <array>

#include "settings/HeatPalette.h"
#include "settings/PreferencesStore.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

/// Red, green and blue.
using Components = std::array<double, 3>;

/// The colours of all palettes in the order of kNames, one index per line.
constexpr std::array kNames = {"B&W", "Vivid", "Pastel", "Earth", "Neon"};
constexpr Components kColors[16][kNames.size()] = {
    {{1.0, 1.0, 1.0}, {0.9, 0.22, 0.21}, {1.0, 0.71, 0.76}, {0.55, 0.35, 0.17}, {1.0, 0.07, 0.57}},
    {{0.7, 0.7, 0.7}, {0.13, 0.59, 0.95}, {0.69, 0.83, 1.0}, {0.33, 0.42, 0.18}, {0.0, 1.0, 0.94}},
    {{0.4, 0.4, 0.4}, {0.3, 0.69, 0.31}, {0.72, 0.96, 0.72}, {0.72, 0.53, 0.04}, {0.44, 1.0, 0.08}},
    {{0.15, 0.15, 0.15}, {1.0, 0.6, 0.0}, {1.0, 0.85, 0.6}, {0.44, 0.3, 0.22}, {1.0, 0.84, 0.0}},
    {{0.85, 0.85, 0.85},
     {0.61, 0.15, 0.69},
     {0.85, 0.72, 1.0},
     {0.6, 0.6, 0.5},
     {0.73, 0.33, 0.83}},
    {{0.55, 0.55, 0.55}, {0.0, 0.74, 0.83}, {0.6, 1.0, 0.98}, {0.76, 0.6, 0.42}, {1.0, 0.35, 0.0}},
    {{0.3, 0.3, 0.3}, {1.0, 0.92, 0.23}, {1.0, 1.0, 0.7}, {0.4, 0.26, 0.13}, {0.0, 0.81, 1.0}},
    {{0.05, 0.05, 0.05},
     {0.91, 0.12, 0.39},
     {1.0, 0.75, 0.86},
     {0.55, 0.55, 0.35},
     {0.0, 1.0, 0.5}},
    {{0.95, 0.95, 0.95}, {0.48, 0.71, 0.0}, {0.8, 1.0, 0.8}, {0.82, 0.71, 0.55}, {1.0, 0.0, 0.0}},
    {{0.75, 0.75, 0.75},
     {0.25, 0.32, 0.71},
     {0.76, 0.76, 1.0},
     {0.5, 0.38, 0.26},
     {0.88, 1.0, 0.0}},
    {{0.5, 0.5, 0.5}, {0.8, 0.36, 0.0}, {1.0, 0.9, 0.7}, {0.65, 0.5, 0.39}, {1.0, 0.41, 0.71}},
    {{0.25, 0.25, 0.25}, {0.0, 0.59, 0.53}, {0.7, 0.93, 0.93}, {0.42, 0.49, 0.31}, {0.0, 1.0, 1.0}},
    {{0.9, 0.9, 0.9}, {0.85, 0.65, 0.13}, {1.0, 0.95, 0.75}, {0.7, 0.63, 0.5}, {0.56, 0.0, 1.0}},
    {{0.65, 0.65, 0.65}, {0.55, 0.24, 0.69}, {0.9, 0.78, 1.0}, {0.35, 0.2, 0.1}, {1.0, 0.5, 0.0}},
    {{0.35, 0.35, 0.35},
     {0.17, 0.73, 0.6},
     {0.78, 1.0, 0.9},
     {0.58, 0.52, 0.38},
     {0.12, 1.0, 0.73}},
    {{0.1, 0.1, 0.1}, {0.83, 0.18, 0.18}, {1.0, 0.82, 0.82}, {0.48, 0.45, 0.3}, {1.0, 0.25, 0.25}},
};

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

TEST(ColorPaletteTest, EveryColorOfEveryPaletteIsTheStatedOne) {
  for (std::size_t palette = 0; palette < kNames.size(); ++palette) {
    const auto& colors = PreferencesStore::palettes().at(palette).colors;
    for (std::size_t place = 0; place < std::size(kColors); ++place) {
      const CodableColor& color = colors.at(place);
      EXPECT_EQ((Components{color.red, color.green, color.blue}), kColors[place][palette])
          << kNames[palette] << ", colour " << place;
    }
  }
}

TEST(HeatPaletteTest, EveryPaletteIsTheStatedOneInItsPlace) {
  const std::vector<HeatPalette> stated = {
      {"Ember", {0.0, 0.0, 0.0, 0.78}, {0.84, 0.19, 0.05, 0.88}, {1.0, 0.64, 0.24, 1.0}},
      {"Ice", {0.02, 0.04, 0.1, 0.78}, {0.05, 0.36, 0.78, 0.88}, {0.36, 0.9, 1.0, 1.0}},
      {"Violet", {0.05, 0.01, 0.09, 0.78}, {0.52, 0.09, 0.7, 0.88}, {1.0, 0.35, 0.85, 1.0}},
      {"Mono", {0.0, 0.0, 0.0, 0.78}, {0.93, 0.93, 0.93, 0.92}, {1.0, 1.0, 1.0, 1.0}}};
  const std::vector<HeatPalette>& palettes = PreferencesStore::heatPalettes();
  ASSERT_EQ(palettes.size(), stated.size());
  for (std::size_t place = 0; place < stated.size(); ++place) {
    EXPECT_EQ(palettes[place].name, stated[place].name);
    EXPECT_EQ(palettes[place].cold, stated[place].cold) << stated[place].name;
    EXPECT_EQ(palettes[place].hot, stated[place].hot) << stated[place].name;
    EXPECT_EQ(palettes[place].rim, stated[place].rim) << stated[place].name;
  }
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
