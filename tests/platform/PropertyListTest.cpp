#include "platform/PropertyList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

TEST(PropertyListTest, TheDefaultValueIsNull) {
  const PropertyList value;
  EXPECT_TRUE(value.isNull());
  EXPECT_EQ(value, PropertyList());
  EXPECT_EQ(value.asBool(), nullptr);
  EXPECT_EQ(value.asDictionary(), nullptr);
}

TEST(PropertyListTest, ExactViewsDoNotConvert) {
  EXPECT_EQ(PropertyList(1).asReal(), nullptr);
  EXPECT_EQ(PropertyList(1.0).asInteger(), nullptr);
  EXPECT_EQ(PropertyList(true).asInteger(), nullptr);
  EXPECT_EQ(PropertyList("1").asInteger(), nullptr);
  EXPECT_EQ(*PropertyList("text").asString(), "text");
}

TEST(PropertyListTest, ABooleanIsAlsoTheNumberZeroOrOne) {
  EXPECT_EQ(PropertyList(true).boolean(), true);
  EXPECT_EQ(PropertyList(0).boolean(), false);
  EXPECT_EQ(PropertyList(1).boolean(), true);
  EXPECT_EQ(PropertyList(1.0).boolean(), true);
  EXPECT_EQ(PropertyList(2).boolean(), std::nullopt);
  EXPECT_EQ(PropertyList(0.5).boolean(), std::nullopt);
  EXPECT_EQ(PropertyList("yes").boolean(), std::nullopt);
  EXPECT_EQ(PropertyList().boolean(), std::nullopt);
}

TEST(PropertyListTest, AnIntegerIsAlsoAWholeRealThatFits) {
  EXPECT_EQ(PropertyList(-7).integer(), -7);
  EXPECT_EQ(PropertyList(42.0).integer(), 42);
  EXPECT_EQ(PropertyList(42.5).integer(), std::nullopt);
  EXPECT_EQ(PropertyList(-9223372036854775808.0).integer(),
            std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(PropertyList(9223372036854775808.0).integer(), std::nullopt);
  EXPECT_EQ(PropertyList(std::nan("")).integer(), std::nullopt);
  EXPECT_EQ(PropertyList(INFINITY).integer(), std::nullopt);
  EXPECT_EQ(PropertyList(true).integer(), std::nullopt);
}

TEST(PropertyListTest, ANumberIsAnIntegerOrAReal) {
  EXPECT_EQ(PropertyList(3).number(), 3.0);
  EXPECT_EQ(PropertyList(0.25).number(), 0.25);
  EXPECT_EQ(PropertyList(false).number(), std::nullopt);
  EXPECT_EQ(PropertyList("3").number(), std::nullopt);
}

TEST(PropertyListTest, AMissingEntryIsNull) {
  const PropertyList value = PropertyList::Dictionary{{"a", 1}};
  EXPECT_EQ(value["a"], PropertyList(1));
  EXPECT_TRUE(value["b"].isNull());
  EXPECT_TRUE(PropertyList("text")["a"].isNull());
  EXPECT_TRUE(value["a"]["deeper"].isNull());
}

TEST(PropertyListTest, EqualityIsDeepAndTellsKindsApart) {
  const auto make = [] {
    return PropertyList(PropertyList::Array{1, "two", PropertyList::Dictionary{{"three", 3.0}}});
  };
  EXPECT_EQ(make(), make());
  EXPECT_NE(make(), PropertyList(PropertyList::Array{1, "two"}));
  EXPECT_NE(PropertyList(1), PropertyList(1.0));
  EXPECT_NE(PropertyList(1), PropertyList(true));
  EXPECT_NE(PropertyList("1"), PropertyList(PropertyList::Data{'1'}));
}

TEST(PropertyListTest, ACopyAllocatesNothing) {
  const PropertyList value = PropertyList::Array{"a string that is too long to be stored in place"};
  const std::size_t before = allocationCount();
  PropertyList copy;
  copy = value;
  const bool equal = copy == value;
  EXPECT_EQ(allocationCount(), before);
  EXPECT_TRUE(equal);
}

}  // namespace
}  // namespace vembrix
