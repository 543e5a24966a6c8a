#include "app/Launch.h"

#include <gmock/gmock.h>

#include "platform/embedded/EmbeddedApplication.h"
#include "platform/embedded/EmbeddedDesktop.h"
#include "platform/embedded/EmbeddedMainQueue.h"
#include "platform/embedded/EmbeddedUserDefaults.h"
#include "platform/embedded/RecordingStatusItem.h"

namespace vembrix {
namespace {

TEST(LaunchTest, TheProgramIsAnAccessoryThatShowsItsTitleAndEndsWithStatusZero) {
  std::string title;
  MainQueue::main().after(std::chrono::seconds(1), [&] {
    title = RecordingStatusItem::current()->title();
    Application::shared().terminate();
  });
  EXPECT_EQ(runVembrix(), 0);
  EXPECT_EQ(title, " Desktop 1 ");
  EXPECT_EQ(EmbeddedApplication::shared().activationPolicy(),
            Application::ActivationPolicy::Accessory);
}

TEST(LaunchTest, SettingsAreMigratedBeforeAnythingIsShown) {
  EmbeddedUserDefaults::shared().writeDomain(
      "com.zorbalintes.app",
      PropertyList::Dictionary{
          {"SpaceNames", PropertyList::Dictionary{{"embedded-space-1", "Work"}}}});
  runVembrix();
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Work ");
  EXPECT_EQ(RecordingStatusItem::current()->changeCount(), 1);
}

TEST(LaunchTest, TheDelegateIsHeldWhileTheProgramRuns) {
  ApplicationDelegate* delegate = nullptr;
  MainQueue::main().after(std::chrono::seconds(1),
                          [&] { delegate = EmbeddedApplication::shared().delegate(); });
  MainQueue::main().after(std::chrono::seconds(2), [] {
    EmbeddedDesktop::shared().activate(EmbeddedDesktop::shared().spaceAt(3));
  });
  runVembrix();
  EXPECT_NE(delegate, nullptr);
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 4 ");
}

}  // namespace
}  // namespace vembrix
