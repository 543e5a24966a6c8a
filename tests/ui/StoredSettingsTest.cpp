// The settings window with any stored values.

#include <gmock/gmock.h>

#include <limits>

#include "support/SettingsPages.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

const char* const kKeys[] = {"ThemeName",       "HeatPaletteName",     "SignTextSize",
                             "SignSwipeAlpha",  "ShowSignInSwipeMode", "ShowSignAfterSelection",
                             "HeatMapSigns",    "MenuBarWidthMode",    "ShowSpaceNameInMenuBar",
                             "ColorMode",       "SpaceColors",         "SpaceNames",
                             "KnownSpaceUUIDs", "InstantMenuSwitch"};

/// Returns values of a wrong type for the key. Unknown names and modes are tested separately.
std::vector<PropertyList> valuesOfWrongType(std::string_view key) {
  std::vector<PropertyList> values = {PropertyList::Date{1.0}, PropertyList::Data{1, 2, 3},
                                      Array{1, "two"}, Dictionary{{"a", 1}}};
  const bool isText = key == "ThemeName" || key == "HeatPaletteName";
  const bool isNumber = key == "SignTextSize" || key == "SignSwipeAlpha";
  if (!isText) values.emplace_back("no such value");
  if (!isNumber) {
    values.emplace_back(7.25);
    values.emplace_back(-1);
  } else {
    values.emplace_back(true);
  }
  return values;
}

class StoredSettingsTest : public SettingsPages {
 protected:
  void expectDefaultsOnEveryTab() {
    open("Label");
    EXPECT_EQ(window().slider("Label Text Size:").value, 160);
    EXPECT_EQ(window().slider("Swipe Opacity:").value, 0.78);
    EXPECT_TRUE(window().checkbox("Show desktop label during swipe transitions").isOn);
    EXPECT_TRUE(window().checkbox("Show desktop label after selection").isOn);
    EXPECT_TRUE(window().checkbox("Warm-tint labels by how recently you used each desktop").isOn);
    EXPECT_EQ(window().selectedItem("Heat Colors:"), "Ember");
    open("Colors");
    EXPECT_EQ(window().selectedItem("Color Mode:"), "Background Color");
    const auto& pastel = PreferencesStore::palettes()[2].colors;
    ASSERT_EQ(window().colorGrid().wells.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(window().colorGrid().wells[i],
                (ColorGrid::Well{"Desktop " + std::to_string(i + 1), pastel[i].srgb()}));
    }
    open("Menu Bar");
    EXPECT_EQ(window().selectedItem("Menu Bar Width:"), "Fit to Title");
    EXPECT_TRUE(window().checkbox("Show desktop name in menu bar").isOn);
    EXPECT_FALSE(window().checkbox("Instant switch (no swipe animation)").isOn);
    open("Theme");
    EXPECT_EQ(window().selectedItem("Theme:"), "Alpine");
    EXPECT_NE(window().themed(), nullptr);
  }
};

TEST_F(StoredSettingsTest, WithNothingStoredEveryControlShowsItsDefault) {
  expectDefaultsOnEveryTab();
}

TEST_F(StoredSettingsTest, WithAValueOfEveryWrongTypeTheWindowOpensWithTheDefaults) {
  for (const char* key : kKeys) {
    for (const PropertyList& value : valuesOfWrongType(key)) {
      SCOPED_TRACE(key);
      defaults_.set(key, value);
      expectDefaultsOnEveryTab();
    }
    defaults_.set(key, {});
  }
}

TEST_F(StoredSettingsTest, WithAllValuesOfAWrongTypeAtOnceTheWindowOpensWithTheDefaults) {
  for (std::size_t i = 0; i < 4; ++i) {
    for (const char* key : kKeys) defaults_.set(key, valuesOfWrongType(key)[i]);
    expectDefaultsOnEveryTab();
  }
}

TEST_F(StoredSettingsTest, AValueOfAWrongTypeIsReplacedWhenItsControlIsUsed) {
  defaults_.set("SignTextSize", "big");
  defaults_.set("HeatMapSigns", Array{});
  defaults_.set("SpaceColors", "none");
  open("Label");
  window().drag("Label Text Size:", 200);
  window().toggle("Warm-tint labels by how recently you used each desktop");
  open("Colors");
  window().pickColor(0, kBlack);
  EXPECT_EQ(defaults_.object("SignTextSize"), PropertyList(200.0));
  EXPECT_EQ(defaults_.object("HeatMapSigns"), PropertyList(false));
  EXPECT_EQ(store_.spaceColors().size(), 1U);
}

TEST_F(StoredSettingsTest, NumbersThatAreNotFiniteReachTheSlidersAsTheyAre) {
  store_.setSignTextSize(std::numeric_limits<double>::infinity());
  EXPECT_EQ(open("Label").slider("Label Text Size:").value,
            std::numeric_limits<double>::infinity());
}

}  // namespace
}  // namespace vembrix
