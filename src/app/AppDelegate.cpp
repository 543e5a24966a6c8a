#include "app/AppDelegate.h"

#include "platform/Accessibility.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

/// Without the permission the program works all the same, with less; it does
/// not wait for the user's answer.
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

  menuBar_ = MenuBarController::create();
}

}  // namespace vembrix
