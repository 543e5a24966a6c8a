#include "settings/PreferencesStore.h"

#include <gmock/gmock.h>

#include <functional>

#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "support/AllocationCounter.h"
#include "support/Posts.h"

namespace vembrix {
namespace {

using testing::IsEmpty;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

class PreferencesStoreTest : public testing::Test {
 protected:
  void store(std::string_view key, const PropertyList& value) { defaults_.set(key, value); }

  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
};

void expectDefaults(const PreferencesStore& store) {
  EXPECT_EQ(store.theme().name, "Alpine");
  EXPECT_EQ(store.heatPalette().name, "Ember");
  EXPECT_EQ(store.signTextSize(), 160.0);
  EXPECT_EQ(store.signSwipeAlpha(), 0.78);
  EXPECT_TRUE(store.showSpaceNameInMenuBar());
  EXPECT_TRUE(store.showSignInSwipeMode());
  EXPECT_TRUE(store.showSignAfterSelection());
  EXPECT_TRUE(store.heatMapSigns());
  EXPECT_FALSE(store.instantMenuSwitch());
  EXPECT_EQ(store.menuBarWidthMode(), MenuBarWidthMode::FitToTitle);
  EXPECT_EQ(store.colorMode(), ColorMode::ColorBackground);
  EXPECT_THAT(store.spaceColors(), IsEmpty());
}

TEST_F(PreferencesStoreTest, ItsNotificationGoesByItsName) {
  EXPECT_EQ(PreferencesStore::didChange, "PreferencesStoreDidChange");
}

TEST_F(PreferencesStoreTest, EmptyUserDefaultsGiveTheDefaults) {
  expectDefaults(store_);
}

TEST_F(PreferencesStoreTest, AValueOfEveryWrongTypeUnderEveryKeyReadsAsTheDefault) {
  const PropertyList text = "no such value";
  const PropertyList number = 7.25;
  const PropertyList date = PropertyList::Date{1.0};
  const PropertyList data = PropertyList::Data{1, 2, 3};
  const PropertyList array = Array{1, "two"};
  const PropertyList dictionary = Dictionary{{"a", 1}};
  const PropertyList boolean = true;

  const std::vector<PropertyList> notBooleans = {text, number, 2,     -1,
                                                 date, data,   array, dictionary};
  const std::vector<PropertyList> notNumbers = {text, boolean, date, data, array, dictionary};
  const std::vector<PropertyList> notStrings = {number, boolean, 1, date, data, array, dictionary};
  std::vector<PropertyList> notModes = notStrings;
  notModes.push_back(text);
  std::vector<PropertyList> notColors = notModes;

  const std::map<std::string, std::vector<PropertyList>> wrong = {
      {"ThemeName", notStrings},
      {"HeatPaletteName", notModes},
      {"SignTextSize", notNumbers},
      {"SignSwipeAlpha", notNumbers},
      {"ShowSpaceNameInMenuBar", notBooleans},
      {"ShowSignInSwipeMode", notBooleans},
      {"ShowSignAfterSelection", notBooleans},
      {"HeatMapSigns", notBooleans},
      {"InstantMenuSwitch", notBooleans},
      {"MenuBarWidthMode", notModes},
      {"ColorMode", notModes},
      {"SpaceColors", notColors},
  };
  for (const auto& [key, values] : wrong) {
    for (const PropertyList& value : values) {
      SCOPED_TRACE(key);
      store(key, value);
      expectDefaults(store_);
      EXPECT_EQ(defaults_.object(key), value) << "reading must not change what is stored";
    }
    store(key, {});
  }
}

TEST_F(PreferencesStoreTest, ShowSpaceNameInMenuBarHoldingTheStringNoReadsAsTrue) {
  store("ShowSpaceNameInMenuBar", "no");
  EXPECT_TRUE(store_.showSpaceNameInMenuBar());
}

TEST_F(PreferencesStoreTest, AStoredNumberZeroOrOneCountsAsABoolean) {
  store("ShowSpaceNameInMenuBar", 0);
  store("InstantMenuSwitch", 1);
  EXPECT_FALSE(store_.showSpaceNameInMenuBar());
  EXPECT_TRUE(store_.instantMenuSwitch());
}

TEST_F(PreferencesStoreTest, AThemeNameInLowerCaseIsTheStockTheme) {
  store("ThemeName", "alpine");
  EXPECT_EQ(store_.theme(), AppTheme::stock());
  EXPECT_EQ(defaults_.object("ThemeName"), PropertyList("alpine"));
}

TEST_F(PreferencesStoreTest, EveryThemeIsFoundByItsName) {
  for (const AppTheme& theme : AppTheme::all()) {
    store_.setThemeName(theme.name);
    EXPECT_EQ(store_.theme(), theme);
  }
}

TEST_F(PreferencesStoreTest, AnUnknownWidthModeFitsToTheTitle) {
  for (const char* raw : {"", "MaxTitleLength", "maxTitleLength ", "wide", "fitToTitle"}) {
    store("MenuBarWidthMode", raw);
    EXPECT_EQ(store_.menuBarWidthMode(), MenuBarWidthMode::FitToTitle) << raw;
  }
  store("MenuBarWidthMode", "maxTitleLength");
  EXPECT_EQ(store_.menuBarWidthMode(), MenuBarWidthMode::MaxTitleLength);
}

TEST_F(PreferencesStoreTest, OnlyTheExactStringSelectsTheForeground) {
  for (const char* raw : {"", "ColorForeground", "foreground", "colorBackground"}) {
    store("ColorMode", raw);
    EXPECT_EQ(store_.colorMode(), ColorMode::ColorBackground) << raw;
  }
  store("ColorMode", "colorForeground");
  EXPECT_EQ(store_.colorMode(), ColorMode::ColorForeground);
}

TEST_F(PreferencesStoreTest, RawValuesParseExactly) {
  EXPECT_EQ(parseMenuBarWidthMode("fitToTitle"), MenuBarWidthMode::FitToTitle);
  EXPECT_EQ(parseMenuBarWidthMode("maxTitleLength"), MenuBarWidthMode::MaxTitleLength);
  EXPECT_EQ(parseMenuBarWidthMode("FitToTitle"), std::nullopt);
  EXPECT_EQ(parseColorMode("colorForeground"), ColorMode::ColorForeground);
  EXPECT_EQ(parseColorMode("colorBackground"), ColorMode::ColorBackground);
  EXPECT_EQ(parseColorMode(""), std::nullopt);
}

TEST_F(PreferencesStoreTest, ATextSizeOf5000IsStoredAndReturnedUnchanged) {
  store_.setSignTextSize(5000);
  EXPECT_EQ(defaults_.object("SignTextSize").number(), 5000.0);
  EXPECT_EQ(store_.signTextSize(), 5000.0);
}

TEST_F(PreferencesStoreTest, NumbersAreNeverClamped) {
  for (const double value : {-1.0, 0.0, 1e9}) {
    store_.setSignSwipeAlpha(value);
    EXPECT_EQ(store_.signSwipeAlpha(), value);
  }
  store("SignTextSize", 12);
  EXPECT_EQ(store_.signTextSize(), 12.0) << "a stored integer is a number";
}

TEST_F(PreferencesStoreTest, EverySetterWritesItsKeyAndPostsOnceAfterwards) {
  struct Case {
    const char* key;
    PropertyList stored;
    std::function<void(PreferencesStore&)> set;
  };
  const std::vector<Case> cases = {
      {"ThemeName", "Coral", [](auto& s) { s.setThemeName("Coral"); }},
      {"HeatPaletteName", "Ice", [](auto& s) { s.setHeatPaletteName("Ice"); }},
      {"SignTextSize", 90.0, [](auto& s) { s.setSignTextSize(90); }},
      {"SignSwipeAlpha", 0.5, [](auto& s) { s.setSignSwipeAlpha(0.5); }},
      {"ShowSpaceNameInMenuBar", false, [](auto& s) { s.setShowSpaceNameInMenuBar(false); }},
      {"ShowSignInSwipeMode", false, [](auto& s) { s.setShowSignInSwipeMode(false); }},
      {"ShowSignAfterSelection", false, [](auto& s) { s.setShowSignAfterSelection(false); }},
      {"HeatMapSigns", false, [](auto& s) { s.setHeatMapSigns(false); }},
      {"InstantMenuSwitch", true, [](auto& s) { s.setInstantMenuSwitch(true); }},
      {"MenuBarWidthMode", "maxTitleLength",
       [](auto& s) { s.setMenuBarWidthMode(MenuBarWidthMode::MaxTitleLength); }},
      {"MenuBarWidthMode", "fitToTitle",
       [](auto& s) { s.setMenuBarWidthMode(MenuBarWidthMode::FitToTitle); }},
      {"ColorMode", "colorForeground", [](auto& s) { s.setColorMode(ColorMode::ColorForeground); }},
      {"ColorMode", "colorBackground", [](auto& s) { s.setColorMode(ColorMode::ColorBackground); }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.key);
    PropertyList seenAtPost;
    int posts = 0;
    const Observation observation =
        NotificationCenter::defaultCenter().addObserver(PreferencesStore::didChange, [&] {
          posts += 1;
          seenAtPost = defaults_.object(each.key);
        });
    each.set(store_);
    EXPECT_EQ(posts, 1);
    EXPECT_EQ(seenAtPost, each.stored);
  }
}

TEST_F(PreferencesStoreTest, ReadersNeverPostAndAllocateNothing) {
  store("ThemeName", "Coral");
  store("ColorMode", "colorForeground");
  ASSERT_EQ(store_.theme().name, "Coral");
  ASSERT_EQ(store_.heatPalette().name, "Ember");
  Posts posts;
  const std::size_t before = allocationCount();
  (void)store_.theme();
  (void)store_.heatPalette();
  (void)store_.colorMode();
  (void)store_.menuBarWidthMode();
  (void)store_.signTextSize();
  (void)store_.showSpaceNameInMenuBar();
  EXPECT_EQ(allocationCount(), before);
  EXPECT_THAT(posts.names(), IsEmpty());
}

TEST_F(PreferencesStoreTest, AValueWrittenByAnotherProgramIsSeenByTheNextRead) {
  EXPECT_EQ(store_.theme().name, "Alpine");
  defaults_.writeDomain(EmbeddedUserDefaults::kApplicationDomain,
                        Dictionary{{"ThemeName", "Frost"}});
  EXPECT_EQ(store_.theme().name, "Frost");
}

}  // namespace
}  // namespace vembrix
