#include "platform/Application.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "platform/MainQueue.h"
#include "support/LaunchDelegate.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ExitedWithCode;

void say(const char* word) { std::fprintf(stderr, "%s.", word); }

/// The event loop in a separate process, since AppKit ends the process. The process prints what it
/// does, in order.
class ApplicationTest : public testing::Test {
 protected:
  ApplicationTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  /// Ends the process in either way.
  static void run(const std::function<void()>& launched) {
    Application& application = Application::shared();
    application.setActivationPolicy(Application::ActivationPolicy::Accessory);
    LaunchDelegate delegate(launched);
    application.setDelegate(&delegate);
    application.run();
    std::exit(1);
  }
};

TEST_F(ApplicationTest, TellsTheDelegateBeforeAnythingElseHappens) {
  EXPECT_EXIT(
      {
        MainQueue::main().async([] {
          say("block");
          Application::shared().terminate();
        });
        run([] { say("launched"); });
      },
      ExitedWithCode(0), "launched\\.block\\.");
}

TEST_F(ApplicationTest, TheLastDelegateCounts) {
  EXPECT_EXIT(
      {
        LaunchDelegate former([] { std::exit(2); });
        Application::shared().setDelegate(&former);
        run([] {
          say("launched");
          Application::shared().terminate();
        });
      },
      ExitedWithCode(0), "launched\\.");
}

TEST_F(ApplicationTest, RunsWithoutADelegate) {
  EXPECT_EXIT(
      {
        MainQueue::main().after(milliseconds(5), [] {
          say("block");
          Application::shared().terminate();
        });
        Application::shared().setDelegate(nullptr);
        Application::shared().run();
        std::exit(1);
      },
      ExitedWithCode(0), "block\\.");
}

TEST_F(ApplicationTest, TerminateEndsTheLoopAfterTheCurrentEvent) {
  EXPECT_EXIT(run([] {
                MainQueue::main().after(std::chrono::hours(1), [] { std::exit(2); });
                Application::shared().terminate();
                say("rest of the event");
              }),
              ExitedWithCode(0), "rest of the event\\.");
}

TEST_F(ApplicationTest, RunsTheMainQueue) {
  EXPECT_EXIT(
      {
        TimerSource timer;
        int beats = 0;
        run([&] {
          timer = MainQueue::main().repeat(milliseconds(5), milliseconds(5), [&] {
            say("beat");
            if (++beats == 3) Application::shared().terminate();
          });
        });
      },
      ExitedWithCode(0), "beat\\.beat\\.beat\\.");
}

TEST_F(ApplicationTest, AnActivityMayEndAtAnyTime) {
  Token activity = Application::shared().beginActivity(
      Application::userInitiatedAllowingIdleSystemSleep, "a test runs");
  EXPECT_TRUE(activity);
  Token other = Application::shared().beginActivity(
      Application::userInitiatedAllowingIdleSystemSleep, "\xFF no UTF-8");
  EXPECT_TRUE(other);
  activity.reset();
  EXPECT_FALSE(activity);
}

}  // namespace
}  // namespace vembrix
