#include "platform/Bundle.h"

#include <gmock/gmock.h>

namespace vembrix {
namespace {

TEST(BundleTest, KnowsTheVersionOfTheBuild) {
  EXPECT_EQ(Bundle::main().infoValue("CFBundleShortVersionString"), PropertyList(VEMBRIX_VERSION));
}

TEST(BundleTest, KnowsTheDateOfTheBuild) {
  const PropertyList date = Bundle::main().infoValue("VembrixBuildDate");
  ASSERT_NE(date.asString(), nullptr);
  EXPECT_THAT(*date.asString(), testing::ContainsRegex("^[0-9]{4}-[0-9]{2}-[0-9]{2} .* UTC$"));
}

TEST(BundleTest, AValueKeepsItsType) {
  EXPECT_EQ(Bundle::main().infoValue("LSUIElement"), PropertyList(true));
}

}  // namespace
}  // namespace vembrix
