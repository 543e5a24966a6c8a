#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/DockSwipeEvent.h"

namespace vembrix {

/// One moment of a swipe between Spaces as a trackpad reports it.
struct TrackpadSwipe {
  /// Where the fingers are, of the trackpad's width; anywhere but at its edge.
  static constexpr double fingerPosition = 0.1;
  /// For whom the gesture is: the Dock, as its first gesture.
  static constexpr std::uint16_t flavor = 3;

  /// Of the host's clock, in its own ticks.
  std::uint64_t timestamp = 0;
  /// A dockswipe::Phase.
  std::int64_t phase = 0;
  /// Spaces crossed so far, to the right.
  double progress = 0;
  /// To the right. Told at the end alone; before, the Space would slide back.
  double velocity = 0;

  [[nodiscard]] bool isLast() const {
    return phase == dockswipe::End || phase == dockswipe::Cancel;
  }
};

/// The report as the kernel's queue of input events lays it out. From macOS 27 on the
/// Dock takes it, and not the event's own fields, for what the user does.
std::vector<std::uint8_t> trackpadReport(const TrackpadSwipe& swipe);

/// The serialised event with the report in it, which no call can put there. Empty when
/// the event is not in the one form that is known, or the report is too long for it.
std::vector<std::uint8_t> withTrackpadReport(std::span<const std::uint8_t> event,
                                             std::span<const std::uint8_t> report);

}  // namespace vembrix
