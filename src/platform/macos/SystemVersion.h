#pragma once

namespace vembrix {

/// The systems from which on something is different for this program.
enum class SystemRelease {
  /// macOS 14: local event monitors see no key presses in open menus.
  Sonoma,
  /// macOS 27: the Dock believes only swipes that come with a trackpad's report, the
  /// user's own may name a process, and Mission Control is WindowManager's.
  GoldenGate,
};

/// Whether the system is that one or a later one. Any thread.
bool isAtLeast(SystemRelease release);

}  // namespace vembrix
