#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "platform/UserDefaults.h"
#include "platform/conformance/SystemUnderTest.h"
#include "platform/conformance/TextSamples.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Data = PropertyList::Data;
using Date = PropertyList::Date;
using Dictionary = PropertyList::Dictionary;

constexpr std::string_view kOther = "com.vembrix.conformance";

class UserDefaultsConformance : public testing::Test {
 protected:
  std::ptrdiff_t logCount() {
    return std::ranges::count_if(system_.logLines(), [](const std::string& line) {
      return line.find("[Vembrix] ") != std::string::npos;
    });
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  const std::string application_ = system_.applicationDomain();
  UserDefaults& defaults_ = UserDefaults::standard();
};

std::vector<PropertyList> valuesOfAllKinds() {
  using Integers = std::numeric_limits<std::int64_t>;
  std::vector<PropertyList> values = {
      true,
      false,
      0,
      1,
      -1,
      Integers::max(),
      Integers::min(),
      0.78,
      160.0,
      -1e-10,
      std::numeric_limits<double>::infinity(),
      "",
      " text ",
      "fitToTitle",
      Date{700000000},
      Data{},
      Data{0, 1, 255},
      Array{},
      Dictionary{},
      Array{"a", 1, Array{}, Dictionary{{"b", 2}}},
      Dictionary{{"uuid-1", "Mail"}, {"", "\U0001F4EC"}, {"\u05D0", Dictionary{{"x", Data{1}}}}}};
  for (const std::string& text : textSamples()) values.emplace_back(text);
  return values;
}

// Our own settings

TEST_F(UserDefaultsConformance, ThereIsOneStore) {
  EXPECT_EQ(&UserDefaults::standard(), &defaults_);
}

TEST_F(UserDefaultsConformance, AKeyWithoutAValueIsNull) {
  EXPECT_TRUE(defaults_.object("Nothing").isNull());
  EXPECT_TRUE(defaults_.object("").isNull());
  defaults_.set("Something", 1);
  EXPECT_TRUE(defaults_.object("Nothing").isNull());
  EXPECT_TRUE(defaults_.object("something").isNull());
}

TEST_F(UserDefaultsConformance, ReadingStoresNothing) {
  EXPECT_TRUE(defaults_.object("Nothing").isNull());
  EXPECT_TRUE(defaults_.keyList(application_).isNull());
  EXPECT_TRUE(system_.readDomain(application_).isNull());
}

TEST_F(UserDefaultsConformance, ValuesOfAllKindsAreStored) {
  for (const PropertyList& value : valuesOfAllKinds()) {
    defaults_.set("Key", value);
    EXPECT_EQ(defaults_.object("Key"), value);
    EXPECT_EQ(system_.readDomain(application_)["Key"], value) << "what any other reader sees";
  }
}

TEST_F(UserDefaultsConformance, KeysAreAnyStrings) {
  std::vector<std::string> keys = textSamples();
  keys.insert(keys.end(), {" ", "<key>", "a&b", "a.b", "a/b", "..", "SpaceNames"});
  for (std::size_t i = 0; i < keys.size(); ++i) defaults_.set(keys[i], static_cast<int>(i));
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(defaults_.object(keys[i]), PropertyList(static_cast<int>(i))) << keys[i];
  }
}

TEST_F(UserDefaultsConformance, ALaterValueReplacesAnEarlierOneOfAnyKind) {
  defaults_.set("Key", "text");
  defaults_.set("Other", "kept");
  defaults_.set("Key", Array{1});
  EXPECT_EQ(defaults_.object("Key"), PropertyList(Array{1}));
  defaults_.set("Key", 2.5);
  EXPECT_EQ(defaults_.object("Key"), PropertyList(2.5));
  EXPECT_EQ(defaults_.object("Other"), PropertyList("kept"));
}

TEST_F(UserDefaultsConformance, ATypeIsPartOfTheValue) {
  defaults_.set("Key", 1);
  defaults_.set("Key", true);
  EXPECT_EQ(defaults_.object("Key"), PropertyList(true));
  defaults_.set("Key", 1.0);
  EXPECT_EQ(defaults_.object("Key"), PropertyList(1.0));
  defaults_.set("Key", 1);
  EXPECT_EQ(defaults_.object("Key"), PropertyList(1));
}

TEST_F(UserDefaultsConformance, NullRemovesTheKey) {
  system_.writeDomain(application_, Dictionary{});
  defaults_.set("Key", 1);
  defaults_.set("Other", 2);
  defaults_.set("Key", {});
  EXPECT_TRUE(defaults_.object("Key").isNull());
  EXPECT_EQ(system_.readDomain(application_), PropertyList(Dictionary{{"Other", 2}}));
  defaults_.set("Key", {});
  defaults_.set("Never", {});
  EXPECT_EQ(system_.readDomain(application_), PropertyList(Dictionary{{"Other", 2}}));
  defaults_.set("Key", 3);
  EXPECT_EQ(defaults_.object("Key"), PropertyList(3));
}

TEST_F(UserDefaultsConformance, AValueThatWasReadStaysWhenTheStoreChanges) {
  defaults_.set("Key", Array{"first"});
  const PropertyList read = defaults_.object("Key");
  const std::string* text = read.asArray()->front().asString();
  defaults_.set("Key", Array{"second"});
  system_.writeDomain(application_, Dictionary{});
  EXPECT_TRUE(defaults_.object("Key").isNull());
  EXPECT_EQ(*text, "first");
}

TEST_F(UserDefaultsConformance, ManyAndLargeValuesAreStored) {
  Dictionary names;
  for (int i = 0; i < 1000; ++i) names.emplace("space-" + std::to_string(i), std::string(100, 'n'));
  defaults_.set("SpaceNames", names);
  defaults_.set("Large", Data(1 << 20, 0x5A));
  EXPECT_TRUE(defaults_.object("SpaceNames") == PropertyList(names));
  EXPECT_TRUE(defaults_.object("Large") == PropertyList(Data(1 << 20, 0x5A)));
}

TEST_F(UserDefaultsConformance, AValueThatCannotBeWrittenIsLoggedOnceAndLost) {
  system_.writeDomain(application_, Dictionary{});
  defaults_.set("Key", "kept");
  const auto before = logCount();
  defaults_.set("Key", Array{1, PropertyList()});
  EXPECT_EQ(logCount(), before + 1);
  EXPECT_EQ(defaults_.object("Key"), PropertyList("kept"));
  EXPECT_EQ(system_.readDomain(application_), PropertyList(Dictionary{{"Key", "kept"}}));
}

TEST_F(UserDefaultsConformance, WhatWorksLogsNothing) {
  const auto before = logCount();
  defaults_.set("Key", "value");
  defaults_.set("Key", "value");
  defaults_.set("Key", {});
  EXPECT_TRUE(defaults_.object("Key").isNull());
  EXPECT_TRUE(defaults_.keyList("com.vembrix.missing").isNull());
  EXPECT_TRUE(defaults_.object("Key", "com.vembrix.missing").isNull());
  EXPECT_EQ(logCount(), before);
}

// Other programs write, too

TEST_F(UserDefaultsConformance, AnotherProgramsWriteIsSeenByTheNextRead) {
  system_.writeDomain(application_, Dictionary{{"Key", "theirs"}});
  EXPECT_EQ(defaults_.object("Key"), PropertyList("theirs"));
  defaults_.set("Key", "ours");
  EXPECT_EQ(defaults_.object("Key"), PropertyList("ours"));
  system_.writeDomain(application_, Dictionary{{"Key", "theirs"}, {"New", true}});
  EXPECT_EQ(defaults_.object("Key"), PropertyList("theirs"));
  EXPECT_EQ(defaults_.object("New"), PropertyList(true));
  system_.writeDomain(application_, Dictionary{{"New", true}});
  EXPECT_TRUE(defaults_.object("Key").isNull());
}

TEST_F(UserDefaultsConformance, WritesOfOneSizeInQuickSuccessionAreAllSeen) {
  for (int i = 1000; i < 1300; ++i) {
    system_.writeDomain(application_, Dictionary{{"Key", i}});
    ASSERT_EQ(defaults_.object("Key"), PropertyList(i));
  }
}

TEST_F(UserDefaultsConformance, OurWriteKeepsWhatOthersWrote) {
  defaults_.set("Ours", 1);
  const Dictionary theirs = {{"Date", Date{700000000}},
                             {"Data", Data{1, 2, 3}},
                             {"Nested", Dictionary{{"list", Array{1, "two", 3.5, false}}}},
                             {"Ours", 2}};
  system_.writeDomain(application_, theirs);
  defaults_.set("Mine", "added");
  Dictionary expected = theirs;
  expected.emplace("Mine", "added");
  EXPECT_EQ(system_.readDomain(application_), PropertyList(expected));
}

TEST_F(UserDefaultsConformance, SettingWhatIsStoredAgainAfterAnotherProgramChangedIt) {
  defaults_.set("Key", "ours");
  system_.writeDomain(application_, Dictionary{{"Key", "them"}});
  defaults_.set("Key", "ours");
  EXPECT_EQ(system_.readDomain(application_)["Key"], PropertyList("ours"));
}

// Other applications' domains

TEST_F(UserDefaultsConformance, ADomainThatDoesNotExistHasNothing) {
  for (const std::string_view domain :
       {"com.vembrix.missing", "", ".", "..", "missing/missing", "../missing", "\xFF\xFE"}) {
    EXPECT_TRUE(defaults_.keyList(domain).isNull()) << domain;
    EXPECT_TRUE(defaults_.object("Key", domain).isNull()) << domain;
  }
  const std::string endless(100000, 'x');
  EXPECT_TRUE(defaults_.keyList(endless).isNull());
  EXPECT_TRUE(defaults_.object("Key", endless).isNull());
  EXPECT_TRUE(defaults_.keyList(std::string_view("a\0b", 3)).isNull());
}

TEST_F(UserDefaultsConformance, TheKeysOfADomainAreListed) {
  system_.writeDomain(kOther, Dictionary{{"b", 1}, {"a", Array{}}, {"\u05D0 \U0001F600", "x"}});
  const PropertyList keys = defaults_.keyList(kOther);
  ASSERT_TRUE(keys.asArray());
  EXPECT_THAT(*keys.asArray(), testing::UnorderedElementsAre(PropertyList("a"), PropertyList("b"),
                                                             PropertyList("\u05D0 \U0001F600")));
}

TEST_F(UserDefaultsConformance, TheValuesOfADomainAreRead) {
  for (const PropertyList& value : valuesOfAllKinds()) {
    system_.writeDomain(kOther, Dictionary{{"Key", value}, {"Another", 1}});
    EXPECT_EQ(defaults_.object("Key", kOther), value);
  }
  EXPECT_TRUE(defaults_.object("Missing", kOther).isNull());
}

TEST_F(UserDefaultsConformance, ADomainIsReadAfreshEveryTime) {
  system_.writeDomain(kOther, Dictionary{{"a", 1}});
  EXPECT_EQ(defaults_.object("a", kOther), PropertyList(1));
  system_.writeDomain(kOther, Dictionary{{"b", 2}});
  EXPECT_EQ(defaults_.object("b", kOther), PropertyList(2));
  EXPECT_TRUE(defaults_.object("a", kOther).isNull());
  EXPECT_EQ(defaults_.keyList(kOther), PropertyList(Array{"b"}));
}

TEST_F(UserDefaultsConformance, OurOwnDomainCanBeReadByName) {
  defaults_.set("Key", "value");
  EXPECT_EQ(defaults_.object("Key", application_), PropertyList("value"));
  EXPECT_EQ(defaults_.keyList(application_), PropertyList(Array{"Key"}));
}

TEST_F(UserDefaultsConformance, DomainsDoNotMix) {
  const PropertyList others = Dictionary{{"Key", "theirs"}, {"Only", 1}};
  system_.writeDomain(kOther, others);
  defaults_.set("Key", "ours");
  EXPECT_EQ(defaults_.object("Key"), PropertyList("ours"));
  EXPECT_TRUE(defaults_.object("Only").isNull());
  EXPECT_EQ(defaults_.object("Key", kOther), PropertyList("theirs"));
  defaults_.set("Only", {});
  EXPECT_EQ(system_.readDomain(kOther), others) << "another's domain is for reading only";
}

// What cannot be read

TEST_F(UserDefaultsConformance, ADamagedDomainIsEmpty) {
  system_.damageDomain(kOther);
  EXPECT_TRUE(defaults_.keyList(kOther).isNull());
  EXPECT_TRUE(defaults_.object("Key", kOther).isNull());
  system_.writeDomain(kOther, Dictionary{{"Key", "whole"}});
  EXPECT_EQ(defaults_.object("Key", kOther), PropertyList("whole"));
}

TEST_F(UserDefaultsConformance, OurOwnDamagedDomainIsEmptyAndCanBeWrittenAgain) {
  defaults_.set("Key", "former");
  system_.damageDomain(application_);
  EXPECT_TRUE(defaults_.object("Key").isNull());
  defaults_.set("New", 1);
  EXPECT_EQ(defaults_.object("New"), PropertyList(1));
  EXPECT_EQ(system_.readDomain(application_), PropertyList(Dictionary{{"New", 1}}));
}

TEST_F(UserDefaultsConformance, ADamagedDomainThatAnotherProgramRepairsIsReadAgain) {
  system_.damageDomain(application_);
  EXPECT_TRUE(defaults_.object("Key").isNull());
  system_.writeDomain(application_, Dictionary{{"Key", "repaired"}});
  EXPECT_EQ(defaults_.object("Key"), PropertyList("repaired"));
}

}  // namespace
}  // namespace vembrix
