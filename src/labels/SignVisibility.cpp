// The visibility of labels.

#include <algorithm>
#include <array>
#include <vector>

#include "labels/SpaceSignWindowController.h"
#include "platform/Application.h"
#include "platform/InputMonitor.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "watchers/MissionControlWatcher.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Lets the corner's own effect begin before the labels appear.
constexpr milliseconds kShowDelay{500};
constexpr seconds kShowDuration{15};
constexpr milliseconds kHideFade{350};
constexpr milliseconds kArrivalFade{500};
constexpr milliseconds kWaveAwayFade{300};
/// Labels that are fainter than this cannot be dismissed, as they are hardly visible.
constexpr double kFaintest = 0.05;

/// The behaviour of the active desktop's label while the others are shown: Mission Control hides
/// it.
constexpr std::uint64_t kBehaviorWhileOthersShow = Transient | IgnoresCycle;

/// Returns the desktop next to the active one; null at the ends of the list, and if the active
/// Space is no desktop.
const SpaceInfo* neighbor(ISSDirection direction) {
  const SpaceManager& manager = SpaceManager::shared();
  const SpaceInfo* former = nullptr;
  bool isPast = false;
  for (const SpaceInfo& space : manager.desktops()) {
    if (isPast) return &space;
    if (space.spaceID == manager.activeSpaceID()) {
      if (direction == ISSDirection::Left) return former;
      isPast = true;
    }
    former = &space;
  }
  return nullptr;
}

}  // namespace

Duration SpaceSignWindowController::fadeTime(Duration usual) {
  return Application::shared().reducesMotion() ? Duration::zero() : usual;
}

void SpaceSignWindowController::showAll() {
  if (!PreferencesStore::shared().showSignAfterSelection() ||
      MissionControlWatcher::shared().isActive()) {
    return;
  }
  flashWorkItem_.reset();
  isShowing_ = true;
  if (Sign* sign = activeSign()) {
    sign->window().setCollectionBehavior(kBehaviorWhileOthersShow);
    sign->window().setAlphaValue(0);
  }
  const SpaceID active = SpaceManager::shared().activeSpaceID();
  MainQueue::main().after(kShowDelay, [weak = weak_from_this(), active] {
    const auto controller = weak.lock();
    if (controller && controller->isShowing_) controller->setAlphaOfAllBut(active, 1);
  });
  hideWorkItem_ = MainQueue::main().schedule(kShowDuration, [weak = weak_from_this()] {
    if (const auto controller = weak.lock()) controller->hideAll();
  });
}

void SpaceSignWindowController::hideAll() {
  if (!isShowing_) return;
  isShowing_ = false;
  hideWorkItem_.reset();
  flashWorkItem_.reset();
  for (auto& [space, sign] : windows_) {
    sign.window().setCollectionBehavior(kSignBehavior);
    sign.window().animateAlphaValue(0, fadeTime(kHideFade));
  }
}

void SpaceSignWindowController::handleSwipeBegan(ISSDirection direction) {
  const PreferencesStore& preferences = PreferencesStore::shared();
  if (!preferences.showSignInSwipeMode() || isTouring_) return;
  const double alpha = preferences.signSwipeAlpha();
  const SpaceID active = SpaceManager::shared().activeSpaceID();
  flashWorkItem_.reset();
  setAlphaOfAllBut(active, alpha);
  const SpaceInfo* target = neighbor(direction);
  if (!target || windows_.contains(target->spaceID)) return;
  WindowServer& server = WindowServer::shared();
  // A new window is in the active Space and would stay there.
  if (!server.canPlaceWindows()) return;
  const Sign& sign = makeSign(*target, IncludingActive::No, alpha);
  pinWindow(sign.window(), target->spaceID);
  server.CGSRemoveWindowsFromSpaces(server.CGSMainConnectionID(),
                                    std::array{sign.window().windowNumber()}, std::array{active});
}

void SpaceSignWindowController::activeChanged() {
  const bool wasShowing = isShowing_;
  hideAll();
  vanishWorkItem_.reset();
  dismissedSpaceIDs_.clear();
  const bool isNew = activeSign() == nullptr || !SpaceManager::shared().activeSpace();
  ensureSignForActiveSpace();
  reconcileWindowSpaces();
  refreshHeat();
  flashWorkItem_.reset();
  const PreferencesStore& preferences = PreferencesStore::shared();
  const bool isShownInSwipes = preferences.showSignInSwipeMode();
  const bool isShown = isShownInSwipes && !isTouring_;
  setAlphaOfAllBut(SpaceManager::shared().activeSpaceID(),
                   isShown ? preferences.signSwipeAlpha() : 0);
  // After a deliberate show, and in a label that was created just now, there is nothing to fade.
  if (isShown && !wasShowing && !isNew) flashActiveSign();
}

void SpaceSignWindowController::flashActiveSign() {
  if (!activeSign()) return;
  const SpaceID active = SpaceManager::shared().activeSpaceID();
  flashWorkItem_ = MainQueue::main().schedule(Duration::zero(), [weak = weak_from_this(), active] {
    const auto controller = weak.lock();
    if (controller) controller->endArrival(active);
  });
}

void SpaceSignWindowController::endArrival(SpaceID space) {
  // The label may have been removed with its desktop.
  const auto fade = [weak = weak_from_this(), space](Duration duration) {
    const auto controller = weak.lock();
    if (!controller) return;
    const auto found = controller->windows_.find(space);
    if (found == controller->windows_.end()) return;
    found->second.window().animateAlphaValue(0, duration);
  };
  if (fadeTime(kArrivalFade) > Duration::zero()) {
    fade(kArrivalFade);
    return;
  }
  // Visible for as long as with the fade, then hidden at once.
  vanishWorkItem_ = MainQueue::main().schedule(kArrivalFade, [fade] { fade(Duration::zero()); });
}

void SpaceSignWindowController::missionControlChanged() {
  if (MissionControlWatcher::shared().isActive()) dismissedSpaceIDs_.clear();
  primeNonActiveSigns();
}

void SpaceSignWindowController::refreshHeat() {
  const SpaceManager& manager = SpaceManager::shared();
  for (const SpaceInfo& space : manager.spaces()) {
    if (space.spaceID == manager.activeSpaceID()) continue;
    const auto found = windows_.find(space.spaceID);
    if (found == windows_.end()) continue;
    found->second.setHeat(SpaceHeatTracker::shared().heat(space.uuid, IncludingActive::No));
  }
}

// Called on every move of the mouse: queries the window server only while a label can be touched.
void SpaceSignWindowController::mouseMoved() {
  if (MissionControlWatcher::shared().isActive()) return;
  if (isShowing_) {
    const Point mouse = InputMonitor::shared().mouseLocation();
    const bool isTouched = std::ranges::any_of(windows_, [&](const auto& entry) {
      return contains(entry.second.window().frame(), mouse);
    });
    if (isTouched) hideAll();
    return;
  }
  Sign* sign = activeSign();
  if (!sign || sign->window().alphaValue() <= kFaintest) return;
  if (!contains(sign->window().frame(), InputMonitor::shared().mouseLocation())) return;
  dismissedSpaceIDs_.insert(SpaceManager::shared().activeSpaceID());
  sign->window().animateAlphaValue(0, fadeTime(kWaveAwayFade));
}

Sign* SpaceSignWindowController::activeSign() {
  const auto found = windows_.find(SpaceManager::shared().activeSpaceID());
  return found == windows_.end() ? nullptr : &found->second;
}

void SpaceSignWindowController::setAlphaOfAllBut(SpaceID exception, double alpha) {
  for (auto& [space, sign] : windows_) {
    if (space != exception) sign.window().setAlphaValue(alpha);
  }
}

}  // namespace vembrix
