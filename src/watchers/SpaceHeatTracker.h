#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Token.h"

namespace vembrix {

/// Whether the active Space counts when heat is asked for.
enum class IncludingActive { No, Yes };

/// Remembers in which order the user last worked (clicked or typed) in the
/// Spaces, and turns it into heat. Time plays no part. Main thread; lives as
/// long as the process.
class SpaceHeatTracker {
 public:
  /// Default center: the order changed.
  static constexpr std::string_view didChange = "SpaceHeatTrackerDidChange";

  static SpaceHeatTracker& shared();

  SpaceHeatTracker(const SpaceHeatTracker&) = delete;
  SpaceHeatTracker& operator=(const SpaceHeatTracker&) = delete;

  /// Begins to notice clicks and key presses in other programs; once.
  void start();

  /// From 0 to 1: 1 for the most recently used Space, 0.78 of the former for
  /// each further place, 0 from the seventh on, for unused Spaces, and while
  /// the user has heat turned off. Without the active Space the others move up.
  [[nodiscard]] double heat(std::string_view spaceUUID, IncludingActive includingActive) const;

 private:
  SpaceHeatTracker();
  void recordEngagement();

  /// The uuids, most recent first, each once.
  std::vector<std::string> recency_;
  Token monitor_;
};

}  // namespace vembrix
