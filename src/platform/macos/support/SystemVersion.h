#pragma once

namespace vembrix {

/// Releases of the system that introduced a difference for this program.
enum class SystemRelease {
  /// macOS 14: local event monitors see no key presses in open menus.
  Sonoma,
  /// macOS 27: the Dock accepts only swipes with a trackpad's report, the user's own swipes may
  /// name a process, and WindowManager draws Mission Control.
  GoldenGate,
};

/// Returns whether the system is that release or a later one. Any thread.
bool isAtLeast(SystemRelease release);

}  // namespace vembrix
