#include "platform/Bundle.h"

#include <gmock/gmock.h>

namespace vembrix {
namespace {

TEST(BundleTest, KnowsTheVersionOfTheBuild) {
  const PropertyList version = Bundle::main().infoValue("CFBundleShortVersionString");
  ASSERT_NE(version.asString(), nullptr);
  EXPECT_EQ(*version.asString(), VEMBRIX_VERSION);
}

TEST(BundleTest, KnowsTheDateOfTheBuild) {
  const PropertyList date = Bundle::main().infoValue("VembrixBuildDate");
  ASSERT_NE(date.asString(), nullptr);
  EXPECT_THAT(*date.asString(),
              testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2} UTC"));
}

}  // namespace
}  // namespace vembrix
