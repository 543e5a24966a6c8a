#pragma once

#include <memory>

#include "labels/SpaceSignWindowController.h"
#include "menubar/MenuBarController.h"
#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "spaces/SpaceObserver.h"
#include "spaces/SwipeWatcher.h"
#include "watchers/HotCornerWatcher.h"

namespace vembrix {

/// Creates and wires everything that lives as long as the program, in a fixed
/// order, when launching has finished. Main thread; never destroyed while the
/// program runs.
class AppDelegate : public ApplicationDelegate {
 public:
  void applicationDidFinishLaunching() override;
  /// Opens the dropdown, for keyboard users and where the menu bar hides the status item.
  void applicationDidReopen() override;

  // Empty before launch.
  [[nodiscard]] const std::shared_ptr<SpaceObserver>& observer() const { return observer_; }
  [[nodiscard]] const std::shared_ptr<MenuBarController>& menuBar() const { return menuBar_; }
  [[nodiscard]] const std::shared_ptr<SpaceSignWindowController>& signs() const { return signs_; }
  [[nodiscard]] const std::shared_ptr<HotCornerWatcher>& hot() const { return hot_; }
  [[nodiscard]] const std::shared_ptr<SwipeWatcher>& swipes() const { return swipes_; }

 private:
  std::shared_ptr<SpaceObserver> observer_;
  std::shared_ptr<MenuBarController> menuBar_;
  std::shared_ptr<SpaceSignWindowController> signs_;
  std::shared_ptr<HotCornerWatcher> hot_;
  std::shared_ptr<SwipeWatcher> swipes_;
  Observation observation_;
  Observation rearrangement_;
};

}  // namespace vembrix
