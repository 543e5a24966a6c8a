#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Token.h"

namespace vembrix {

/// Whether the active Space counts in a query for heat.
enum class IncludingActive { No, Yes };

/// Records the order in which the user last clicked or typed in the Spaces and converts it to heat,
/// regardless of time. Main thread; lives as long as the process.
class SpaceHeatTracker {
 public:
  /// Default center: the order has changed.
  static constexpr std::string_view didChange = "SpaceHeatTrackerDidChange";

  static SpaceHeatTracker& shared();

  SpaceHeatTracker(const SpaceHeatTracker&) = delete;
  SpaceHeatTracker& operator=(const SpaceHeatTracker&) = delete;

  /// Starts to observe clicks and key presses in other programs; to be called once.
  void start();

  /// Returns the heat from 0 to 1: 1 for the most recently used Space, 0.78 times as much for each
  /// further one, 0 from the seventh on, for unused Spaces, and while the user has turned heat off.
  /// If the active Space does not count, the others move up by one.
  [[nodiscard]] double heat(std::string_view spaceUUID, IncludingActive includingActive) const;

 private:
  SpaceHeatTracker();
  void recordEngagement();

  /// The uuids, most recent first, each once.
  std::vector<std::string> recency_;
  Token monitor_;
};

}  // namespace vembrix
