#include "platform/linux/menubar/strip/StripPlaces.h"

#include <gtest/gtest.h>

#include "platform/PropertyList.h"
#include "platform/UserDefaults.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

constexpr const char* kKey = "LinuxStatusItemPlaces";
constexpr const char* kLaptop = "1440x900+0+0";
constexpr const char* kDocked = "2560x1440+0+0 1440x900+2560+540";

class StripPlacesTest : public testing::Test {
 protected:
  static UserDefaults& defaults() { return UserDefaults::standard(); }

  TestSession session_;
  StripPlace place_{.monitor = 1,
                    .edge = StripPlace::Edge::Bottom,
                    .side = StripPlace::Side::Left,
                    .offset = 120,
                    .isOnPanel = true};
};

TEST_F(StripPlacesTest, NamesALayoutByItsMonitors) {
  EXPECT_EQ(monitorLayout({{0, 0, 1440, 900}}), kLaptop);
  EXPECT_EQ(monitorLayout({{0, 0, 2560, 1440}, {2560, 540, 1440, 900}}), kDocked);
  EXPECT_EQ(monitorLayout({{-1440, 0, 1440, 900}}), "1440x900-1440+0");
  EXPECT_EQ(monitorLayout({}), "");
}

TEST_F(StripPlacesTest, RemembersAPlaceForEachLayout) {
  EXPECT_EQ(storedStripPlace(kLaptop), std::nullopt);
  storeStripPlace(kDocked, place_);
  storeStripPlace(kLaptop, StripPlace{.offset = 7});
  EXPECT_EQ(storedStripPlace(kDocked), place_);
  EXPECT_EQ(storedStripPlace(kLaptop), StripPlace{.offset = 7});
}

TEST_F(StripPlacesTest, ForgetsAPlaceAndKeepsTheOthers) {
  storeStripPlace(kDocked, place_);
  storeStripPlace(kLaptop, place_);
  storeStripPlace(kLaptop, std::nullopt);
  EXPECT_EQ(storedStripPlace(kLaptop), std::nullopt);
  EXPECT_EQ(storedStripPlace(kDocked), place_);
  storeStripPlace(kDocked, std::nullopt);
  EXPECT_TRUE(defaults().object(kKey).isNull());
}

TEST_F(StripPlacesTest, WhatMakesNoSenseIsNoPlace) {
  const PropertyList::Dictionary good{
      {"Monitor", 0}, {"Edge", "top"}, {"Side", "left"}, {"Offset", 3}, {"OnPanel", false}};
  const auto stored = [&](const char* key, const PropertyList& value) {
    PropertyList::Dictionary place = good;
    place.insert_or_assign(key, value);
    defaults().set(kKey, PropertyList::Dictionary{{kLaptop, place}});
    return storedStripPlace(kLaptop).has_value();
  };
  EXPECT_TRUE(stored("Offset", 3));
  EXPECT_FALSE(stored("Offset", "3"));
  EXPECT_FALSE(stored("Offset", -1));
  EXPECT_FALSE(stored("Offset", std::int64_t{1} << 40));
  EXPECT_FALSE(stored("Monitor", 0.5));
  EXPECT_FALSE(stored("Edge", "left"));
  EXPECT_FALSE(stored("Side", 1));
  EXPECT_FALSE(stored("OnPanel", "yes"));
}

TEST_F(StripPlacesTest, StoredDataOfAnotherTypeIsReplaced) {
  defaults().set(kKey, "nothing of the kind");
  EXPECT_EQ(storedStripPlace(kLaptop), std::nullopt);
  storeStripPlace(kLaptop, place_);
  EXPECT_EQ(storedStripPlace(kLaptop), place_);
}

}  // namespace
}  // namespace vembrix
