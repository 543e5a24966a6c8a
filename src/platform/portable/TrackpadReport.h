#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/DockSwipeEvent.h"

namespace vembrix {

/// One moment of a swipe between Spaces as a trackpad reports it.
struct TrackpadSwipe {
  /// The fingers' position as a fraction of the trackpad's width; any value away from the edge
  /// works.
  static constexpr double fingerPosition = 0.1;
  /// The receiver of the gesture: the Dock, as its first gesture.
  static constexpr std::uint16_t flavor = 3;

  /// In ticks of the host's clock.
  std::uint64_t timestamp = 0;
  /// A dockswipe::Phase.
  std::int64_t phase = 0;
  /// Spaces crossed so far; positive to the right.
  double progress = 0;
  /// Positive to the right. Set only at the end; earlier the Space would slide back.
  double velocity = 0;

  [[nodiscard]] bool isLast() const {
    return phase == dockswipe::End || phase == dockswipe::Cancel;
  }
};

/// Returns the report in the layout of the kernel's queue of input events. From macOS 27 on the
/// Dock reads it instead of the event's own fields.
std::vector<std::uint8_t> trackpadReport(const TrackpadSwipe& swipe);

/// Returns the serialised event with the report inserted, which no public call can do. Empty when
/// the event's format is unknown or the report is too long for it.
std::vector<std::uint8_t> withTrackpadReport(std::span<const std::uint8_t> event,
                                             std::span<const std::uint8_t> report);

}  // namespace vembrix
