// The product's own switching on a real window manager.

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

class SpaceSwitchingTest : public testing::TestWithParam<bool> {
 protected:
  SpaceSwitchingTest() {
    display_.startWindowManager();
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    Application::shared();
    PreferencesStore::shared().setInstantMenuSwitch(GetParam());
    manager().reload();
  }

  static SpaceManager& manager() { return SpaceManager::shared(); }

  std::vector<std::uint32_t> current() {
    return display_.client().cardinals(display_.client().root(), "_NET_CURRENT_DESKTOP");
  }

  /// Returns whether the window manager goes to that desktop and stays there.
  bool goTo(std::uint32_t index) {
    manager().switchToSpace(manager().spaces().at(index));
    const std::vector<std::uint32_t> wanted{index};
    if (!runUntil([&] { return current() == wanted; })) return false;
    runFor(milliseconds(600));
    return current() == wanted;
  }

  TestSession session_;
  PrivateDisplay display_;
  SpaceObserver observer_;
  Observation observation_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { observer_.activeSpaceDidChange(); });
};

TEST_P(SpaceSwitchingTest, ArrivesAcrossThreeDesktops) {
  ASSERT_EQ(manager().spaces().size(), 4U);
  EXPECT_TRUE(goTo(3));
  EXPECT_TRUE(goTo(0));
  EXPECT_TRUE(goTo(2));
}

TEST_P(SpaceSwitchingTest, StaysOnTheDesktopThatIsCurrent) {
  EXPECT_TRUE(goTo(0));
}

INSTANTIATE_TEST_SUITE_P(, SpaceSwitchingTest, testing::Bool(),
                         [](const auto& info) { return info.param ? "Instant" : "Animated"; });

}  // namespace
}  // namespace vembrix
