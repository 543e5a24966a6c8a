#include "platform/UserDefaults.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <cstdlib>

#import "platform/macos/support/Arc.h"
#include "platform/macos/support/OtherProgram.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

class UserDefaultsTest : public testing::Test {
 protected:
  static NSUserDefaults* native() { return NSUserDefaults.standardUserDefaults; }

  TestDomains domains_;
  UserDefaults& defaults_ = UserDefaults::standard();
};

TEST_F(UserDefaultsTest, NumbersAreReadByTheirOwnType) {
  [native() setObject:[NSNumber numberWithChar:1] forKey:@"Key"];
  EXPECT_EQ(defaults_.object("Key"), PropertyList(1));
  [native() setBool:YES forKey:@"Key"];
  EXPECT_EQ(defaults_.object("Key"), PropertyList(true));
  [native() setInteger:1 forKey:@"Key"];
  EXPECT_EQ(defaults_.object("Key"), PropertyList(1));
  [native() setDouble:1 forKey:@"Key"];
  EXPECT_EQ(defaults_.object("Key"), PropertyList(1.0));
  [native() setObject:[NSNumber numberWithUnsignedLongLong:~0ULL] forKey:@"Key"];
  EXPECT_EQ(defaults_.object("Key").number(), 18446744073709551615.0);
}

TEST_F(UserDefaultsTest, NullWithinAValueIsNotStored) {
  defaults_.set("Key", "kept");
  for (const PropertyList& value :
       {PropertyList(Array{PropertyList()}), PropertyList(Dictionary{{"a", PropertyList()}}),
        PropertyList(PropertyList::Date{std::numeric_limits<double>::infinity()})}) {
    defaults_.set("Key", value);
    EXPECT_EQ(defaults_.object("Key"), PropertyList("kept"));
  }
}

TEST_F(UserDefaultsTest, AValueThatHasNotChangedIsConvertedOnce) {
  defaults_.set("Key", Array{"a", Dictionary{{"b", 1}}});
  const PropertyList first = defaults_.object("Key");
  for (int i = 0; i < 10; ++i) EXPECT_EQ(defaults_.object("Key").asArray(), first.asArray());
  defaults_.set("Other", 1);
  defaults_.set("Key", Array{"b"});
  EXPECT_EQ(defaults_.object("Key"), PropertyList(Array{"b"}));
}

TEST_F(UserDefaultsTest, WhatAllApplicationsShareIsNoOthers) {
  [native() setObject:@[ @"tlh" ] forKey:@"AppleLanguages"];
  EXPECT_FALSE(defaults_.object("AppleLanguages").isNull());
  EXPECT_TRUE(defaults_.object("AppleLanguages", TestDomains::kOther).isNull());
  other_program::writeDomain(TestDomains::kOther, Dictionary{{"Key", 1}});
  EXPECT_TRUE(defaults_.object("AppleLanguages", TestDomains::kOther).isNull());
  EXPECT_EQ(defaults_.keyList(TestDomains::kOther), PropertyList(Array{"Key"}));
}

TEST_F(UserDefaultsTest, RegisteredValuesAreNotStoredOnes) {
  [native() registerDefaults:@{@"Key" : @"registered"}];
  EXPECT_TRUE(defaults_.object("Key", domains_.application()).isNull());
  defaults_.set("Key", "ours");
  EXPECT_EQ(defaults_.object("Key", domains_.application()), PropertyList("ours"));
}

TEST_F(UserDefaultsTest, ADomainGoesWithItsLastKey) {
  other_program::writeDomain(TestDomains::kOther, Dictionary{{"Key", 1}});
  EXPECT_FALSE(defaults_.keyList(TestDomains::kOther).isNull());
  other_program::writeDomain(TestDomains::kOther, Dictionary{});
  EXPECT_TRUE(defaults_.keyList(TestDomains::kOther).isNull());
}

TEST_F(UserDefaultsTest, WhatWasSetLastIsStoredWhenTheProcessEnds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        UserDefaults::standard().set("Last", Array{"of all"});
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EQ(other_program::readDomain(domains_.application()),
            PropertyList(Dictionary{{"Last", Array{"of all"}}}));
}

}  // namespace
}  // namespace vembrix
