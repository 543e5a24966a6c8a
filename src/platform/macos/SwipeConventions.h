#pragma once

#include <cstdint>

namespace vembrix {

// What swipes between Spaces say on macOS 27, where that is not what they said before.
//
// One thing is as it was: a positive progress or velocity of the user's own swipe is
// towards the next Space, whichever way the user scrolls. Natural scrolling turns the
// swipe itself round, and with it where it goes.

/// By what progress and velocity towards the next Space are multiplied in the trackpad's
/// report of a synthetic swipe. The Dock takes the direction of the fingers from the
/// report, and turns it round when the user scrolls naturally.
constexpr double reportSign(bool isScrollingNatural) {
  return isScrollingNatural ? -1 : 1;
}

/// Which process the events of a device name as the one that posted them.
enum class DeviceEvents {
  /// None: 0. Up to macOS 26.
  NameNoProcess,
  /// None, or one of the system's.
  MayNameAProcess,
};

/// The process that posted an event, 0 for a device, by the process that the event names.
/// Where a device's events may name one, only this program's own events are certain to
/// be a program's.
constexpr std::int64_t postingProcess(DeviceEvents devices, std::int64_t named, std::int64_t own) {
  if (devices == DeviceEvents::MayNameAProcess && named != own) return 0;
  return named;
}

}  // namespace vembrix
