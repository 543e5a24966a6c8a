#include "app/Launch.h"

#include <gmock/gmock.h>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"

namespace vembrix {
namespace {

using std::chrono::seconds;

/// Runs the program until the user quits it after that time; returns its status.
int runFor(Duration duration) {
  MainQueue::main().after(duration, [] { Application::shared().terminate(); });
  return runVembrix({});
}

TEST(LaunchTest, TheProgramIsAnAccessoryThatShowsItsTitleAndEndsWithStatusZero) {
  EXPECT_EQ(runFor(seconds(1)), 0);
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 1 ");
  EXPECT_EQ(EmbeddedApplication::shared().activationPolicy(),
            Application::ActivationPolicy::Accessory);
}

TEST(LaunchTest, SettingsAreMigratedBeforeAnythingIsShown) {
  EmbeddedUserDefaults::shared().writeDomain(
      "com.zorbalintes.app",
      PropertyList::Dictionary{
          {"SpaceNames", PropertyList::Dictionary{{"embedded-space-1", "Work"}}}});
  runFor(seconds(1));
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Work ");
  EXPECT_EQ(RecordingStatusItem::current()->changeCount(), 1);
}

TEST(LaunchTest, TheDelegateIsHeldWhileTheProgramRuns) {
  ApplicationDelegate* delegate = nullptr;
  MainQueue::main().after(seconds(1), [&] { delegate = EmbeddedApplication::shared().delegate(); });
  MainQueue::main().after(
      seconds(1), [] { EmbeddedDesktop::shared().activate(EmbeddedDesktop::shared().spaceAt(3)); });
  runFor(seconds(1));
  EXPECT_NE(delegate, nullptr);
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 4 ");
}

}  // namespace
}  // namespace vembrix
