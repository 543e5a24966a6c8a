#pragma once

#include <cstdint>

namespace vembrix {

// Differences between swipe events on macOS 27 and before.
//
// On both, a positive progress or velocity of the user's own swipe leads to the next Space, in
// either scroll direction. Natural scrolling reverses the swipe itself, and with it the target.

/// Returns the factor of progress and velocity in the trackpad's report of a synthetic swipe. The
/// Dock takes the direction of the fingers from the report and reverses it when the user scrolls
/// naturally.
constexpr double reportSign(bool isScrollingNatural) {
  return isScrollingNatural ? -1 : 1;
}

/// The process that a device's events name as their sender.
enum class DeviceEvents {
  /// None: 0. Up to macOS 26.
  NameNoProcess,
  /// None, or one of the system's.
  MayNameAProcess,
};

/// Returns the process that posted an event, or 0 for a device, given the process that the event
/// names. If events of devices may name one, only this program's own process is certain.
constexpr std::int64_t postingProcess(DeviceEvents devices, std::int64_t named, std::int64_t own) {
  if (devices == DeviceEvents::MayNameAProcess && named != own) return 0;
  return named;
}

}  // namespace vembrix
