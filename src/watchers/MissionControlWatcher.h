#pragma once

#include <string_view>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/PropertyList.h"
#include "platform/Screens.h"

namespace vembrix {

/// Determines whether Mission Control is open. The system does not report it, so the on-screen
/// windows are read three times a second. Main thread; lives as long as the process.
class MissionControlWatcher {
 public:
  /// Default center: Mission Control has opened or closed.
  static constexpr std::string_view didChange = "MissionControlWatcherDidChange";

  static MissionControlWatcher& shared();

  MissionControlWatcher(const MissionControlWatcher&) = delete;
  MissionControlWatcher& operator=(const MissionControlWatcher&) = delete;

  /// The result of the last reading.
  [[nodiscard]] bool isActive() const { return isActive_; }

  /// Starts to read the windows, at once and then every 0.3 s; to be called once.
  void start();

 private:
  MissionControlWatcher() = default;
  void poll();
  /// Returns whether the Dock covers (nearly) a whole screen.
  bool detect();

  bool isActive_ = false;
  // The last window list and its result, which usually apply to the next reading, too.
  PropertyList answer_;
  std::vector<Screen> screens_;
  bool isCovered_ = false;
  TimerSource timer_;
};

}  // namespace vembrix
