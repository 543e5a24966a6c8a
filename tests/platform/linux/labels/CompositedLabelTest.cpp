#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include "platform/linux/labels/LabelWindowTest.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::Gt;
using testing::SizeIs;

class CompositedLabelTest : public LabelWindowTest {
 protected:
  CompositedLabelTest() { client().claimCompositing(); }

  std::vector<std::uint32_t> opacity(xcb_window_t window) {
    return client().cardinals(window, "_NET_WM_WINDOW_OPACITY");
  }
};

TEST_F(CompositedLabelTest, TellsItsAlphaToWhoeverPutsTheScreenTogether) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  EXPECT_THAT(opacity(window), ElementsAre(0xFFFFFFFFU));
  label->setAlphaValue(0.5);
  EXPECT_TRUE(runUntil([&] { return opacity(window) == std::vector{0x80000000U}; }));
}

TEST_F(CompositedLabelTest, ComesUpAsFaintAsItIs) {
  const auto label = make("Mail");
  label->setAlphaValue(0.25);
  const xcb_window_t window = this->window();
  EXPECT_THAT(opacity(window), ElementsAre(0x40000000U));
}

TEST_F(CompositedLabelTest, ItsFadeGoesOnWhileTheProgramIsBusy) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->animateAlphaValue(0.2, milliseconds(1500));
  ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xFFFFFFFFU; }));
  const std::uint32_t before = opacity(window)[0];
  // No event is read during this time.
  std::this_thread::sleep_for(milliseconds(300));
  EXPECT_LT(opacity(window)[0], before);
}

TEST_F(CompositedLabelTest, AFadeThatIsBrokenOffDoesNotComeThrough) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  for (int round = 0; round < 5; ++round) {
    label->animateAlphaValue(0.1, milliseconds(400));
    ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xE0000000U; }));
    label->setAlphaValue(1);
    ASSERT_TRUE(runUntil([&] { return opacity(window)[0] == 0xFFFFFFFFU; }));
    runFor(milliseconds(100));
    EXPECT_THAT(opacity(window), ElementsAre(0xFFFFFFFFU));
  }
}

TEST_F(CompositedLabelTest, AFadeInThePlaceOfAnotherEndsWhereItIsTo) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->animateAlphaValue(0.1, std::chrono::seconds(1));
  ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xE0000000U; }));
  label->animateAlphaValue(0.5, milliseconds(200));
  runFor(milliseconds(1200));
  EXPECT_THAT(opacity(window), ElementsAre(0x80000000U));
}

TEST_F(CompositedLabelTest, TwoFadeAtTheSameTime) {
  const auto first = make("First");
  const auto second = make("Second");
  ASSERT_TRUE(runUntil([&] { return shown().size() == 2; }));
  first->animateAlphaValue(0.5, milliseconds(300));
  second->animateAlphaValue(0.5, milliseconds(300));
  EXPECT_TRUE(runUntil([&] {
    return std::ranges::all_of(windows(), [&](xcb_window_t window) {
      return opacity(window) == std::vector{0x80000000U};
    });
  }));
}

TEST_F(CompositedLabelTest, HiddenOnTheWayOutItComesBackAsItIs) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  label->animateAlphaValue(0.1, milliseconds(500));
  ASSERT_TRUE(runUntil([&] { return opacity(window)[0] < 0xE0000000U; }));
  ASSERT_TRUE(client().goToDesktop(1));
  ASSERT_TRUE(runUntilShown({}));
  label->setAlphaValue(1);
  ASSERT_TRUE(client().goToDesktop(0));
  ASSERT_TRUE(runUntilShown({"Mail"}));
  runFor(milliseconds(500));
  EXPECT_THAT(opacity(window), ElementsAre(0xFFFFFFFFU));
}

TEST_F(CompositedLabelTest, FadesStepByStep) {
  const auto label = make("Mail");
  const xcb_window_t window = this->window();
  std::vector<std::uint32_t> seen;
  label->animateAlphaValue(0, milliseconds(400));
  EXPECT_TRUE(runUntil([&] {
    const auto now = opacity(window);
    if (!now.empty() && (seen.empty() || seen.back() != now[0])) seen.push_back(now[0]);
    return shown().empty();
  }));
  EXPECT_THAT(seen, SizeIs(Gt(4U)));
  EXPECT_TRUE(std::ranges::is_sorted(seen, std::greater()));
}

}  // namespace
}  // namespace vembrix
