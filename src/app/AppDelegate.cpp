#include "app/AppDelegate.h"

#include "platform/Accessibility.h"
#include "platform/MainQueue.h"
#include "spaces/SpaceManager.h"
#include "watchers/MissionControlWatcher.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {
namespace {

/// Time for other programs to start after the login.
constexpr std::chrono::milliseconds kTourDelay{1500};

/// Does not wait for the user's answer: without the permission the program works, with fewer
/// features.
void requestAccessibility() {
  Accessibility& accessibility = Accessibility::shared();
  if (!accessibility.isProcessTrusted(Accessibility::Prompt::No)) {
    accessibility.isProcessTrusted(Accessibility::Prompt::Yes);
  }
}

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
  requestAccessibility();

  auto observer = std::make_shared<SpaceObserver>();
  observation_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [weak = std::weak_ptr(observer)] {
        if (const auto observer = weak.lock()) observer->activeSpaceDidChange();
      });
  SpaceManager::shared().reload();
  observer_ = std::move(observer);

  MissionControlWatcher::shared().start();
  // The user may have reordered the Spaces in Mission Control, which no notification reports.
  rearrangement_ =
      NotificationCenter::defaultCenter().addObserver(MissionControlWatcher::didChange, [] {
        if (!MissionControlWatcher::shared().isActive()) SpaceManager::shared().reload();
      });
  SpaceHeatTracker::shared().start();
  menuBar_ = MenuBarController::create();
  signs_ = SpaceSignWindowController::create();

  hot_ = HotCornerWatcher::create();
  hot_->onApproach = [weak = std::weak_ptr(signs_)] {
    if (const auto signs = weak.lock()) signs->showAll();
  };
  hot_->start();
  swipes_ = SwipeWatcher::create();
  swipes_->onSwipeBegan = [weak = std::weak_ptr(signs_)](ISSDirection direction) {
    if (const auto signs = weak.lock()) signs->handleSwipeBegan(direction);
  };
  swipes_->start();

  MainQueue::main().after(kTourDelay, [] { SpaceManager::shared().performAutoTour({}); });
}

void AppDelegate::applicationDidReopen() {
  if (menuBar_) menuBar_->openMenu();
}

}  // namespace vembrix
