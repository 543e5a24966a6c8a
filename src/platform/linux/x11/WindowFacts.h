#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/x11/X11Connection.h"

namespace vembrix {

// Properties of other programs' windows. Each call asks the X server and waits. Windows that no
// longer exist have no properties.

struct WindowFacts {
  /// The program's name by its window class, else by its process; "Dock" for a program that shows
  /// all windows at once, as the system's Dock does. Empty if unknown.
  std::string owner;
  /// The desktop's background and icons.
  bool isDesktopElement = false;
  /// Whether it takes input only and is invisible.
  bool isInvisible = false;
  /// Counted from 0; all ones for all desktops; empty if not stated.
  std::optional<std::uint32_t> desktop;
};
WindowFacts readWindowFacts(X11Connection& connection, xcb_window_t window);

/// Returns the program's own window within a window manager's frames, or the window itself if there
/// is none.
xcb_window_t clientWithin(X11Connection& connection, xcb_window_t window);

}  // namespace vembrix
