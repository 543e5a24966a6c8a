#pragma once

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "labels/SpaceSignWindowController.h"
#include "platform/NotificationCenter.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/faces/RecordingSignWindow.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"
#include "watchers/MissionControlWatcher.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {

/// A desktop with labels, wired as the program wires them, but without the tour.
class SignTest : public testing::Test {
 protected:
  using SpaceID = EmbeddedDesktop::SpaceID;

  /// Creates the controller on that many desktops, the first of which is active.
  void begin(std::size_t desktops = 4) {
    desktop_.setSpaceCount(desktops);
    beginHere();
  }
  void beginHere() {
    manager_.reload();
    observation_ = NotificationCenter::workspace().addObserver(
        notification::kActiveSpaceDidChange, [this] { observer_.activeSpaceDidChange(); });
    controller_ = SpaceSignWindowController::create();
  }
  /// Begins at rest with a label in every desktop. The first desktop is active, and the next tick
  /// of the controller's timer is half a second away.
  void beginWithAllLabels(std::size_t desktops = 4) {
    begin(desktops);
    for (std::size_t place = 1; place < desktops; ++place) goTo(place);
    goTo(0);
    queue_.advance(std::chrono::seconds(1));
  }

  /// Takes the user to the desktop at that place.
  void goTo(std::size_t place) { desktop_.activate(space(place)); }
  SpaceID space(std::size_t place) const { return desktop_.spaceAt(place); }
  void advance(int time) { queue_.advance(std::chrono::milliseconds(time)); }
  void turn() { queue_.runPending(); }
  /// Opens or closes Mission Control and waits until the program has noticed: not at all the first
  /// time, later up to 300 ms.
  void setMissionControl(bool open) {
    MissionControlWatcher& watcher = MissionControlWatcher::shared();
    desktop_.setMissionControl(open);
    watcher.start();
    turn();
    while (watcher.isActive() != open) advance(1);
  }
  void engage() { desktop_.input().send(LeftMouseDown); }
  void moveMouse(double x, double y) {
    desktop_.input().moveMouse({x, y});
    turn();
  }
  void touchLabels() { moveMouse(720, 450); }

  static std::size_t labelCount() { return RecordingSignWindow::all().size(); }
  static bool hasLabel(SpaceID id) { return !RecordingSignWindow::inSpace(id).empty(); }
  /// Returns the only label in the Space.
  static RecordingSignWindow& labelIn(SpaceID id) {
    const auto found = RecordingSignWindow::inSpace(id);
    if (found.size() != 1) {
      throw std::logic_error(std::to_string(found.size()) + " labels in " + std::to_string(id));
    }
    return *found.front();
  }
  RecordingSignWindow& label(std::size_t place) const { return labelIn(space(place)); }
  double alpha(std::size_t place) const { return label(place).alphaValue(); }
  /// Returns the alpha values of the labels in the order of the desktops.
  std::vector<double> alphas(std::size_t count = 4) const {
    std::vector<double> values;
    for (std::size_t place = 0; place < count; ++place) values.push_back(alpha(place));
    return values;
  }
  std::vector<SpaceID> spacesOf(const RecordingSignWindow& window) const {
    return desktop_.windows().spacesOf(std::array{window.windowNumber()}, {});
  }
  static std::vector<std::string> log() { return EmbeddedLog::shared().lines(); }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
  SpaceManager& manager_ = SpaceManager::shared();
  SpaceObserver observer_;
  Observation observation_;
  std::shared_ptr<SpaceSignWindowController> controller_;
};

}  // namespace vembrix
