#pragma once

#include <string_view>

#include "platform/MainQueue.h"

namespace vembrix {

/// Knows whether Mission Control is open. The system does not tell, so the
/// on-screen windows are looked at three times a second. Main thread; lives as
/// long as the process.
class MissionControlWatcher {
 public:
  /// Default center: it opened or closed.
  static constexpr std::string_view didChange = "MissionControlWatcherDidChange";

  static MissionControlWatcher& shared();

  MissionControlWatcher(const MissionControlWatcher&) = delete;
  MissionControlWatcher& operator=(const MissionControlWatcher&) = delete;

  /// As of the last look.
  [[nodiscard]] bool isActive() const { return isActive_; }

  /// Begins to look, at once and then every 0.3 s; once.
  void start();

 private:
  MissionControlWatcher() = default;
  void poll();
  /// Whether the Dock covers (nearly) a whole screen.
  static bool detect();

  bool isActive_ = false;
  TimerSource timer_;
};

}  // namespace vembrix
