#include "platform/Bundle.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

class BundleConformance : public testing::Test {
 protected:
  SystemUnderTest& system_ = SystemUnderTest::shared();
};

TEST_F(BundleConformance, KnowsItsVersionAndDateAsTextOrNotAtAll) {
  for (const char* key : {"CFBundleShortVersionString", "VembrixBuildDate"}) {
    const PropertyList value = Bundle::main().infoValue(key);
    if (value.isNull()) continue;
    ASSERT_NE(value.asString(), nullptr) << key;
    EXPECT_FALSE(value.asString()->empty()) << key;
  }
}

TEST_F(BundleConformance, HasNothingUnderOtherKeys) {
  for (const char* key : {"NoSuchKey", "", "cfbundleshortversionstring", "VembrixBuildDate "}) {
    EXPECT_TRUE(Bundle::main().infoValue(key).isNull()) << key;
  }
}

TEST_F(BundleConformance, TakesAKeyByItsCharacters) {
  const std::string_view text = "VembrixBuildDateAndMore";
  EXPECT_TRUE(Bundle::main().infoValue(text).isNull());
  EXPECT_EQ(Bundle::main().infoValue(text.substr(0, 16)),
            Bundle::main().infoValue("VembrixBuildDate"));
}

}  // namespace
}  // namespace vembrix
