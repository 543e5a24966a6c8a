#include "platform/Accessibility.h"

#include <gtest/gtest.h>

#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

class AccessibilityConformance : public testing::Test {
 protected:
  SystemUnderTest& system_ = SystemUnderTest::shared();
  Accessibility& accessibility_ = Accessibility::shared();
};

TEST_F(AccessibilityConformance, IsGivenOnTheSystemsOfTheTests) {
  EXPECT_TRUE(accessibility_.isProcessTrusted(Accessibility::Prompt::No));
}

TEST_F(AccessibilityConformance, AskingChangesNothingWhereItIsGiven) {
  EXPECT_TRUE(accessibility_.isProcessTrusted(Accessibility::Prompt::Yes));
  EXPECT_TRUE(accessibility_.isProcessTrusted(Accessibility::Prompt::No));
}

}  // namespace
}  // namespace vembrix
