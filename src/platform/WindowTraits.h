#pragma once

#include <cstdint>

namespace vembrix {

/// The stacking level of a window, by the system's numbers.
enum class WindowLevel : std::int64_t {
  /// Above the windows of programs.
  Floating = 3,
  /// Above floating windows.
  Status = 25,
};

/// How Spaces, Mission Control and window switching treat a window: the system's bits.
enum CollectionBehavior : std::uint64_t {
  /// In every Space.
  CanJoinAllSpaces = 1U << 0U,
  /// In one Space, and shown by Mission Control.
  Managed = 1U << 2U,
  /// In one Space, and hidden by Mission Control.
  Transient = 1U << 3U,
  /// Not moved by Mission Control.
  Stationary = 1U << 4U,
  /// Skipped when the user cycles through windows.
  IgnoresCycle = 1U << 6U,
  /// May be shown in the Space of a full-screen window.
  FullScreenAuxiliary = 1U << 8U,
};

}  // namespace vembrix
