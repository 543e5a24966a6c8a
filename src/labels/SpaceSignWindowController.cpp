// The events that the controller responds to: notifications, timers, the mouse.

#include "labels/SpaceSignWindowController.h"

#include "platform/Application.h"
#include "platform/InputMonitor.h"
#include "platform/UserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "watchers/MissionControlWatcher.h"

namespace vembrix {

std::shared_ptr<SpaceSignWindowController> SpaceSignWindowController::create() {
  std::shared_ptr<SpaceSignWindowController> controller(new SpaceSignWindowController());
  controller->start();
  return controller;
}

void SpaceSignWindowController::start() {
  ensureSignForActiveSpace();
  observe();
  // The timers of idle background programs are late, which would delay the labels.
  activityToken_ = Application::shared().beginActivity(
      Application::userInitiatedAllowingIdleSystemSleep, "Keep desktop-label priming responsive");
  startPrimeTimer();
  startMouseMonitor();
}

void SpaceSignWindowController::observe() {
  using Handler = void (SpaceSignWindowController::*)();
  const auto calling = [this](Handler handler) {
    return [weak = weak_from_this(), handler] {
      const auto controller = weak.lock();
      if (!controller) return;
      // Every label is laid out and tinted by the same settings.
      const Token reading = UserDefaults::standard().beginReading();
      (*controller.*handler)();
    };
  };
  using Self = SpaceSignWindowController;
  NotificationCenter& center = NotificationCenter::defaultCenter();
  NotificationCenter& workspace = NotificationCenter::workspace();
  observations_ = {
      center.addObserver(SpaceManager::didChange, calling(&Self::spacesChanged)),
      center.addObserver(SpaceManager::activeChanged, calling(&Self::activeChanged)),
      center.addObserver(PreferencesStore::didChange, calling(&Self::prefsDidChange)),
      workspace.addObserver(notification::kActiveSpaceDidChange,
                            calling(&Self::primeNonActiveSigns)),
      center.addObserver(notification::kScreenParametersDidChange, calling(&Self::layOutSigns)),
      center.addObserver(SpaceManager::tourWillStart, calling(&Self::tourWillStart)),
      center.addObserver(SpaceManager::tourDidEnd, calling(&Self::tourDidEnd)),
      center.addObserver(MissionControlWatcher::didChange, calling(&Self::missionControlChanged)),
      center.addObserver(SpaceHeatTracker::didChange, calling(&Self::refreshHeat)),
      workspace.addObserver(notification::kDidWake, calling(&Self::primeNonActiveSigns)),
  };
}

void SpaceSignWindowController::startPrimeTimer() {
  constexpr std::chrono::milliseconds kInterval{500};
  primeTimer_ = MainQueue::main().poll(kInterval, kInterval, [weak = weak_from_this()] {
    if (const auto controller = weak.lock()) controller->primeTimerFired();
  });
}

void SpaceSignWindowController::primeTimerFired() {
  constexpr std::int64_t kTicksPerReconciliation = 10;
  const Token reading = UserDefaults::standard().beginReading();
  primeNonActiveSigns();
  primeTick_ += 1;
  if (primeTick_ % kTicksPerReconciliation == 0) reconcileWindowSpaces();
}

void SpaceSignWindowController::startMouseMonitor() {
  mouseMonitor_ = InputMonitor::shared().addGlobalMonitor(MouseMoved, [weak = weak_from_this()] {
    if (const auto controller = weak.lock()) controller->mouseMoved();
  });
}

}  // namespace vembrix
