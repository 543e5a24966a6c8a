#include "platform/embedded/services/EmbeddedUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

constexpr std::string_view kOther = "com.example";

class EmbeddedUserDefaultsTest : public testing::Test {
 protected:
  EmbeddedUserDefaults defaults_;
};

TEST_F(EmbeddedUserDefaultsTest, ReadingAndStoringWhatIsStoredAllocateNothing) {
  const PropertyList value = Dictionary{{"a", Array{1, "b"}}};
  const PropertyList equal = Dictionary{{"a", Array{1, "b"}}};
  defaults_.set("Key", value);
  const std::size_t before = allocationCount();
  EXPECT_TRUE(defaults_.object("Key") == equal);
  EXPECT_TRUE(defaults_.object("Missing").isNull());
  EXPECT_TRUE(defaults_.object("Key", "com.vembrix.missing").isNull());
  defaults_.set("Key", equal);
  defaults_.set("Missing", {});
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(EmbeddedUserDefaultsTest, EveryCallOfSetCounts) {
  defaults_.set("Key", 1);
  defaults_.set("Key", 1);
  defaults_.set("Missing", {});
  defaults_.set("Key", Array{PropertyList()});
  EXPECT_EQ(defaults_.writeCount(), 4);
}

TEST_F(EmbeddedUserDefaultsTest, WhatIsNoDictionaryIsNoDomain) {
  for (const PropertyList& contents : {PropertyList(Array{"Key"}), PropertyList("Key")}) {
    defaults_.writeDomain(kOther, contents);
    EXPECT_TRUE(defaults_.object("Key", kOther).isNull());
    EXPECT_TRUE(defaults_.keyList(kOther).isNull());
    EXPECT_TRUE(defaults_.readDomain(kOther).isNull());
  }
}

TEST_F(EmbeddedUserDefaultsTest, AnEmptyDomainHasAnEmptyListOfKeys) {
  defaults_.writeDomain(kOther, Dictionary{});
  EXPECT_EQ(defaults_.keyList(kOther), PropertyList(Array{}));
  defaults_.writeDomain(kOther, {});
  EXPECT_TRUE(defaults_.keyList(kOther).isNull());
}

TEST_F(EmbeddedUserDefaultsTest, TheKeyListCanBeOverridden) {
  defaults_.writeDomain(kOther, Dictionary{{"Key", 1}});
  defaults_.overrideKeyList(7);
  EXPECT_EQ(defaults_.keyList(kOther), PropertyList(7));
  EXPECT_EQ(defaults_.keyList("com.vembrix.missing"), PropertyList(7));
  defaults_.overrideKeyList({});
  EXPECT_EQ(defaults_.keyList(kOther), PropertyList(Array{"Key"}));
}

}  // namespace
}  // namespace vembrix
