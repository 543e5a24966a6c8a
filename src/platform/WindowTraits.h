#pragma once

#include <cstdint>

namespace vembrix {

/// How high a window stands among the others, as the system numbers it.
enum class WindowLevel : std::int64_t {
  /// Above the windows of programs.
  Floating = 3,
  /// Above floating windows, too.
  Status = 25,
};

/// How a window goes along with Spaces, Mission Control and the switching of
/// windows: bits, as the system numbers them.
enum CollectionBehavior : std::uint64_t {
  /// In every Space.
  CanJoinAllSpaces = 1U << 0U,
  /// In one Space, and shown by Mission Control.
  Managed = 1U << 2U,
  /// In one Space, and hidden by Mission Control.
  Transient = 1U << 3U,
  /// Mission Control leaves it where it is.
  Stationary = 1U << 4U,
  /// Switching from window to window passes it over.
  IgnoresCycle = 1U << 6U,
  /// May stand in the Space of a full-screen window.
  FullScreenAuxiliary = 1U << 8U,
};

}  // namespace vembrix
