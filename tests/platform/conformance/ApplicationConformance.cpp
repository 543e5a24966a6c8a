#include "platform/Application.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/conformance/SystemUnderTest.h"
#include "support/LaunchDelegate.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

class ApplicationConformance : public testing::Test {
 protected:
  void switchTo(Appearance appearance) {
    system_.setAppearance(appearance);
    EXPECT_TRUE(system_.runUntil([&] { return application_.effectiveAppearance() == appearance; },
                                 kPatience));
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  Application& application_ = Application::shared();
  MainQueue& queue_ = MainQueue::main();
  std::vector<std::string> calls_;
};

TEST_F(ApplicationConformance, IsOneForTheProcess) {
  EXPECT_EQ(&Application::shared(), &application_);
}

TEST_F(ApplicationConformance, TellsTheDelegateOnceThatLaunchingHasFinished) {
  LaunchDelegate delegate([&] { calls_.emplace_back("launched"); });
  application_.setDelegate(&delegate);
  system_.runFor(milliseconds(10));
  EXPECT_TRUE(calls_.empty());
  queue_.after(milliseconds(50), [&] { application_.terminate(); });
  EXPECT_EQ(application_.run(), 0);
  EXPECT_THAT(calls_, ElementsAre("launched"));
}

TEST_F(ApplicationConformance, TellsTheDelegateBeforeAnythingElseHappens) {
  LaunchDelegate delegate([&] { calls_.emplace_back("launched"); });
  application_.setDelegate(&delegate);
  queue_.async([&] {
    calls_.emplace_back("block");
    application_.terminate();
  });
  application_.run();
  EXPECT_THAT(calls_, ElementsAre("launched", "block"));
}

TEST_F(ApplicationConformance, TheLastDelegateCounts) {
  LaunchDelegate former([&] { calls_.emplace_back("former"); });
  LaunchDelegate delegate([&] {
    calls_.emplace_back("delegate");
    application_.terminate();
  });
  application_.setDelegate(&former);
  application_.setDelegate(&delegate);
  application_.run();
  EXPECT_THAT(calls_, ElementsAre("delegate"));
}

TEST_F(ApplicationConformance, RunsWithoutADelegate) {
  queue_.after(milliseconds(5), [&] {
    calls_.emplace_back("block");
    application_.terminate();
  });
  EXPECT_EQ(application_.run(), 0);
  EXPECT_THAT(calls_, ElementsAre("block"));
}

TEST_F(ApplicationConformance, TerminateEndsTheLoopAfterTheCurrentEvent) {
  LaunchDelegate delegate([&] {
    queue_.after(std::chrono::hours(1), [&] { calls_.emplace_back("an hour later"); });
    application_.terminate();
    calls_.emplace_back("rest of the event");
  });
  application_.setDelegate(&delegate);
  EXPECT_EQ(application_.run(), 0);
  EXPECT_THAT(calls_, ElementsAre("rest of the event"));
}

TEST_F(ApplicationConformance, RunsTheMainQueue) {
  TimerSource timer;
  LaunchDelegate delegate([&] {
    timer = queue_.repeat(milliseconds(5), milliseconds(5), [&] {
      calls_.emplace_back("beat");
      if (calls_.size() == 3) application_.terminate();
    });
  });
  application_.setDelegate(&delegate);
  EXPECT_EQ(application_.run(), 0);
  EXPECT_THAT(calls_, ElementsAre("beat", "beat", "beat"));
}

TEST_F(ApplicationConformance, AnAccessoryRunsAsAnyOther) {
  application_.setActivationPolicy(Application::ActivationPolicy::Accessory);
  LaunchDelegate delegate([&] {
    calls_.emplace_back("launched");
    application_.terminate();
  });
  application_.setDelegate(&delegate);
  EXPECT_EQ(application_.run(), 0);
  EXPECT_THAT(calls_, ElementsAre("launched"));
}

TEST_F(ApplicationConformance, LooksAsTheSystemDoes) {
  switchTo(Appearance::Dark);
  switchTo(Appearance::Light);
  switchTo(Appearance::Dark);
}

TEST_F(ApplicationConformance, AChangeOfAppearanceIsAnnouncedOnceWhenItHolds) {
  switchTo(Appearance::Light);
  std::vector<std::optional<Appearance>> seen;
  const auto observation = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged,
      [&] { seen.push_back(application_.effectiveAppearance()); });
  switchTo(Appearance::Dark);
  system_.runFor(milliseconds(50));
  EXPECT_THAT(seen, ElementsAre(Appearance::Dark));
  switchTo(Appearance::Light);
  system_.runFor(milliseconds(50));
  EXPECT_THAT(seen, ElementsAre(Appearance::Dark, Appearance::Light));
}

TEST_F(ApplicationConformance, TheSameAppearanceAgainIsNoChange) {
  switchTo(Appearance::Dark);
  int changes = 0;
  const auto observation = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [&] { changes += 1; });
  system_.setAppearance(Appearance::Dark);
  system_.runFor(milliseconds(50));
  EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace vembrix
