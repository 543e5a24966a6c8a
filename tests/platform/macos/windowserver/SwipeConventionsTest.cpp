#include "platform/macos/windowserver/SwipeConventions.h"

#include <gtest/gtest.h>

#include "platform/DockSwipeEvent.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "spaces/SwipeWatcher.h"

namespace vembrix {
namespace {

constexpr std::int64_t kOwn = 501;
constexpr std::int64_t kOther = 88;

TEST(SwipeConventionsTest, TheReportIsTurnedRoundWhileTheUserScrollsNaturally) {
  EXPECT_EQ(reportSign(true), -1);
  EXPECT_EQ(reportSign(false), 1);
}

TEST(SwipeConventionsTest, UpToMacOS26TheProcessIsTheOneThatTheEventNames) {
  for (const std::int64_t named : {std::int64_t{0}, kOwn, kOther}) {
    EXPECT_EQ(postingProcess(DeviceEvents::NameNoProcess, named, kOwn), named);
  }
}

TEST(SwipeConventionsTest, OnMacOS27OnlyThisProgramsOwnEventsAreAPrograms) {
  EXPECT_EQ(postingProcess(DeviceEvents::MayNameAProcess, 0, kOwn), 0);
  EXPECT_EQ(postingProcess(DeviceEvents::MayNameAProcess, kOther, kOwn), 0);
  EXPECT_EQ(postingProcess(DeviceEvents::MayNameAProcess, kOwn, kOwn), kOwn);
}

/// Returns how often the watcher notices a swipe that names that process.
int swipesNoticed(DeviceEvents devices, std::int64_t named) {
  const auto watcher = SwipeWatcher::create();
  int count = 0;
  watcher->onSwipeBegan = [&count](ISSDirection) { count += 1; };
  watcher->start();
  GestureEvent event;
  event.setIntegerField(dockswipe::SourceProcess, postingProcess(devices, named, kOwn));
  event.setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
  event.setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
  event.setIntegerField(dockswipe::GesturePhase, dockswipe::Begin);
  EmbeddedDesktop::shared().events().send(event);
  EmbeddedMainQueue::shared().runPending();
  return count;
}

TEST(SwipeConventionsTest, TheUsersSwipesAreNoticedByWhateverNameTheyCome) {
  EXPECT_EQ(swipesNoticed(DeviceEvents::NameNoProcess, 0), 1);
  EXPECT_EQ(swipesNoticed(DeviceEvents::NameNoProcess, kOther), 0);
  EXPECT_EQ(swipesNoticed(DeviceEvents::MayNameAProcess, 0), 1);
  EXPECT_EQ(swipesNoticed(DeviceEvents::MayNameAProcess, kOther), 1);
  EXPECT_EQ(swipesNoticed(DeviceEvents::MayNameAProcess, kOwn), 0);
}

}  // namespace
}  // namespace vembrix
