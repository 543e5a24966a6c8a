#pragma once

namespace vembrix {

class X11Desktop;

/// What the program runs on.
struct ChosenDesktop {
  /// The desktop of the X session; null for the desktop in the process.
  X11Desktop* x11 = nullptr;
  /// The Qt platform that goes with it; null where the user names one.
  const char* qtPlatform = nullptr;
};

/// The choice, made on first use for the life of the process: VEMBRIX_DESKTOP
/// ("x11" or "embedded") where it is set, else X11 where a display with an EWMH
/// window manager answers. At the start of a session, where the window manager
/// may be late, that takes up to three seconds. Ends the program where X11 is
/// demanded and no display answers. Main thread.
const ChosenDesktop& chosenDesktop();

}  // namespace vembrix
