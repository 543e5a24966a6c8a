#pragma once

namespace vembrix {

class SpaceWindows;
class X11Desktop;

/// What the program runs on.
struct ChosenDesktop {
  /// The desktop of the X session; null for the desktop in the process.
  X11Desktop* x11 = nullptr;
  /// The Qt platform that goes with it; null where the user names one.
  const char* qtPlatform = nullptr;
};

/// The choice, made on first use for the life of the process: X11 where a display
/// answers, with or without a window manager; the desktop in the process where
/// VEMBRIX_DESKTOP is "embedded", and for drawing pictures where no display answers.
/// Main thread.
const ChosenDesktop& chosenDesktop();

/// To be called before the program begins to run. Ends it with a failure status and
/// one line in the log where there is no desktop for it to show: no display answers, or
/// the display is a Wayland session's whose compositor gives X11 programs no desktops.
/// For the latter it waits up to three seconds, as a compositor may be late. Main thread.
void requireDesktop();

/// The windows in the Spaces of the chosen desktop.
SpaceWindows& chosenWindows();

}  // namespace vembrix
