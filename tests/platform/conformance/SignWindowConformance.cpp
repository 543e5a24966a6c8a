#include "platform/SignWindow.h"

#include <gmock/gmock.h>

#include <chrono>

#include "platform/TextSize.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::Gt;
using testing::Lt;

class SignWindowConformance : public testing::Test {
 protected:
  SystemUnderTest& system_ = SystemUnderTest::shared();
  std::unique_ptr<SignWindow> window_ = SignWindow::create({.frame = {100, 200, 300, 120}});
};

TEST_F(SignWindowConformance, HasANumberOfItsOwn) {
  const auto other = SignWindow::create({.frame = {0, 0, 10, 10}});
  EXPECT_NE(window_->windowNumber(), 0U);
  EXPECT_NE(window_->windowNumber(), other->windowNumber());
}

TEST_F(SignWindowConformance, IsWhereItWasTold) {
  EXPECT_EQ(window_->frame(), (Rect{100, 200, 300, 120}));
  window_->setFrame({10, 20, 33, 44});
  EXPECT_EQ(window_->frame(), (Rect{10, 20, 33, 44}));
}

TEST_F(SignWindowConformance, TellsPartsOfPoints) {
  window_->setFrame({10.25, 20.5, 33.125, 44});
  EXPECT_EQ(window_->frame(), (Rect{10.25, 20.5, 33.125, 44}));
}

TEST_F(SignWindowConformance, TellsExactlyTheAlphaThatWasSet) {
  EXPECT_EQ(window_->alphaValue(), 1);
  for (const double alpha : {0.78, 0.0, 1.0 / 3, 1.0}) {
    window_->setAlphaValue(alpha);
    EXPECT_EQ(window_->alphaValue(), alpha);
  }
}

TEST_F(SignWindowConformance, AnAnimationPassesThroughAndEndsExactly) {
  window_->setAlphaValue(0.8);
  window_->animateAlphaValue(0.1, milliseconds(300));
  EXPECT_GT(window_->alphaValue(), 0.5) << "not at once";
  EXPECT_TRUE(system_.runUntil([&] { return window_->alphaValue() < 0.6; }, kPatience));
  EXPECT_THAT(window_->alphaValue(), AllOf(Gt(0.0999), Lt(0.6)));
  EXPECT_TRUE(system_.runUntil([&] { return window_->alphaValue() == 0.1; }, kPatience));
}

TEST_F(SignWindowConformance, SettingEndsAnAnimation) {
  window_->animateAlphaValue(0, milliseconds(200));
  system_.runFor(milliseconds(50));
  window_->setAlphaValue(0.5);
  system_.runFor(milliseconds(300));
  EXPECT_EQ(window_->alphaValue(), 0.5);
}

TEST_F(SignWindowConformance, AnAnimationTakesThePlaceOfAnother) {
  window_->animateAlphaValue(0, milliseconds(100));
  window_->animateAlphaValue(0.9, milliseconds(200));
  system_.runFor(milliseconds(400));
  EXPECT_TRUE(system_.runUntil([&] { return window_->alphaValue() == 0.9; }, kPatience));
}

TEST_F(SignWindowConformance, AnAnimationOfNoTimeIsASetting) {
  window_->animateAlphaValue(0.25, Duration::zero());
  EXPECT_EQ(window_->alphaValue(), 0.25);
}

TEST(TextSizeConformance, GrowsWithTheTextAndTheFont) {
  SystemUnderTest::shared();
  const Font small{.weight = Font::Weight::Heavy, .size = 40};
  const Font large{.weight = Font::Weight::Heavy, .size = 120};
  const Size word = textSize("Desktop", small);
  EXPECT_GT(word.width, 40);
  EXPECT_THAT(word.height, AllOf(Gt(40), Lt(60)));
  EXPECT_GT(textSize("Desktop 12", small).width, word.width);
  EXPECT_NEAR(textSize("Desktop", large).width, 3 * word.width, 0.05 * word.width);
  EXPECT_NEAR(textSize("Desktop", large).height, 3 * word.height, 3);
}

TEST(TextSizeConformance, AnyTextIsAsHighAsALine) {
  SystemUnderTest::shared();
  const Font font{.weight = Font::Weight::Heavy, .size = 80};
  const double height = textSize("Desktop", font).height;
  EXPECT_EQ(textSize("", font).height, height);
  EXPECT_EQ(textSize("", font).width, 0);
  EXPECT_EQ(textSize("Ä\nj", font).height, height);
  EXPECT_GT(textSize("\xFF\xFE", font).width, 0) << "what is no UTF-8 is replaced";
}

}  // namespace
}  // namespace vembrix
