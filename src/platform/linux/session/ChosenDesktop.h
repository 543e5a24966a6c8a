#pragma once

namespace vembrix {

class DesktopServices;
class SpaceWindows;
class X11Desktop;

/// The desktop that the program runs on.
struct ChosenDesktop {
  /// The services of the seam that differ from one desktop to another.
  DesktopServices& services;
  /// The desktop of the X session; null for the desktop in the process.
  X11Desktop* x11 = nullptr;
  /// The matching Qt platform; null if the user has named one.
  const char* qtPlatform = nullptr;
};

/// Returns the desktop, chosen on first use for the life of the process: X11 if a display answers,
/// with or without a window manager; the desktop in the process if VEMBRIX_DESKTOP is "embedded",
/// and for drawing pictures if no display answers. Main thread.
const ChosenDesktop& chosenDesktop();

/// Ends the program with a failure status and one line in the log if no display answers, or if the
/// display belongs to a Wayland session whose compositor offers no desktops to X11 programs; it
/// waits up to three seconds for these. To be called before the program runs. Main thread.
void requireDesktop();

/// Returns the program's windows in the Spaces of the chosen desktop.
SpaceWindows& chosenWindows();

}  // namespace vembrix
