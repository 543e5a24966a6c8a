#include "app/LegacyDefaults.h"

#include <gmock/gmock.h>

#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Dictionary = PropertyList::Dictionary;

class LegacyDefaultsTest : public testing::Test {
 protected:
  void setLegacy(Dictionary contents) {
    defaults_.writeDomain("com.zorbalintes.app", std::move(contents));
  }

  bool migrated() { return defaults_.object("DidMigrateLegacyDefaults") == PropertyList(true); }
  static std::vector<std::string> log() { return EmbeddedLog::shared().lines(); }

  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
};

TEST_F(LegacyDefaultsTest, CopiesEveryLegacyValueUnchanged) {
  const Dictionary legacy = {{"ThemeName", "Coral"},
                             {"SignTextSize", 90.5},
                             {"HeatMapSigns", false},
                             {"SpaceColors", PropertyList::Data{'{', '}'}},
                             {"SpaceNames", Dictionary{{"u", "Work"}}},
                             {"Unknown", PropertyList::Date{12.5}}};
  setLegacy(legacy);
  migrateLegacyDefaultsIfNeeded();
  for (const auto& [key, value] : legacy) EXPECT_EQ(defaults_.object(key), value) << key;
  EXPECT_TRUE(migrated());
  EXPECT_THAT(log(), ElementsAre("[Vembrix] migrated 6 settings from legacy domain"));
}

TEST_F(LegacyDefaultsTest, ASecondLaunchCopiesNothingThoughTheLegacyDomainChanged) {
  setLegacy({{"ThemeName", "Coral"}});
  migrateLegacyDefaultsIfNeeded();
  setLegacy({{"ThemeName", "Paper"}, {"HeatPaletteName", "Ice"}});
  migrateLegacyDefaultsIfNeeded();
  EXPECT_EQ(defaults_.object("ThemeName"), PropertyList("Coral"));
  EXPECT_TRUE(defaults_.object("HeatPaletteName").isNull());
  EXPECT_EQ(log().size(), 1U);
}

TEST_F(LegacyDefaultsTest, AKeyInBothDomainsKeepsTheValueOfTheUserDefaults) {
  defaults_.set("ThemeName", "Frost");
  setLegacy({{"ThemeName", "Coral"}, {"HeatPaletteName", "Ice"}});
  migrateLegacyDefaultsIfNeeded();
  EXPECT_EQ(defaults_.object("ThemeName"), PropertyList("Frost"));
  EXPECT_EQ(defaults_.object("HeatPaletteName"), PropertyList("Ice"));
  EXPECT_THAT(log(), ElementsAre("[Vembrix] migrated 2 settings from legacy domain"));
}

TEST_F(LegacyDefaultsTest, FiveKeysThatAllExistAreCountedButNotCopied) {
  Dictionary legacy;
  for (const char* key : {"A", "B", "C", "D", "E"}) {
    legacy.emplace(key, "old");
    defaults_.set(key, "new");
  }
  setLegacy(legacy);
  migrateLegacyDefaultsIfNeeded();
  for (const auto& [key, value] : legacy) {
    EXPECT_EQ(defaults_.object(key), PropertyList("new")) << key;
  }
  EXPECT_THAT(log(), ElementsAre("[Vembrix] migrated 5 settings from legacy domain"));
}

TEST_F(LegacyDefaultsTest, WithoutALegacyDomainOnlyTheFlagIsSet) {
  migrateLegacyDefaultsIfNeeded();
  EXPECT_TRUE(migrated());
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(LegacyDefaultsTest, AnEmptyLegacyDomainIsCountedAsNothing) {
  defaults_.overrideKeyList(PropertyList::Array{});
  migrateLegacyDefaultsIfNeeded();
  EXPECT_TRUE(migrated());
  EXPECT_THAT(log(), ElementsAre("[Vembrix] migrated 0 settings from legacy domain"));
}

TEST_F(LegacyDefaultsTest, AKeyListOfAnotherTypeCopiesNothing) {
  setLegacy({{"ThemeName", "Coral"}});
  for (const PropertyList& answer :
       {PropertyList("text"), PropertyList(PropertyList::Array{"ThemeName", 7}),
        PropertyList(Dictionary{{"ThemeName", 1}})}) {
    defaults_.set("DidMigrateLegacyDefaults", {});
    defaults_.overrideKeyList(answer);
    migrateLegacyDefaultsIfNeeded();
    EXPECT_TRUE(defaults_.object("ThemeName").isNull());
    EXPECT_TRUE(migrated());
  }
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(LegacyDefaultsTest, AKeyWithoutValueIsSkipped) {
  defaults_.overrideKeyList(PropertyList::Array{"Vanished"});
  migrateLegacyDefaultsIfNeeded();
  EXPECT_TRUE(defaults_.object("Vanished").isNull());
  EXPECT_THAT(log(), ElementsAre("[Vembrix] migrated 1 settings from legacy domain"));
}

TEST_F(LegacyDefaultsTest, AFlagOfAnotherTypeDoesNotCountAsMigrated) {
  defaults_.set("DidMigrateLegacyDefaults", "perhaps");
  setLegacy({{"ThemeName", "Coral"}});
  migrateLegacyDefaultsIfNeeded();
  EXPECT_EQ(defaults_.object("ThemeName"), PropertyList("Coral"));
  EXPECT_TRUE(migrated());
}

TEST_F(LegacyDefaultsTest, AFlagStoredAsTheNumberOneCounts) {
  defaults_.set("DidMigrateLegacyDefaults", 1);
  setLegacy({{"ThemeName", "Coral"}});
  migrateLegacyDefaultsIfNeeded();
  EXPECT_TRUE(defaults_.object("ThemeName").isNull());
}

}  // namespace
}  // namespace vembrix
