#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/x11/X11Connection.h"

namespace vembrix {

// Properties of other programs' windows. Each call asks the X server and waits; a window that is
// gone has none.

struct WindowFacts {
  /// The program's name by its window class, else that of its process; "Dock" for a program that
  /// shows all windows at once, as the system's Dock does. Empty where unknown.
  std::string owner;
  /// The desktop's background and icons.
  bool isDesktopElement = false;
  /// Takes input only and shows nothing.
  bool isInvisible = false;
  /// From 0; all ones for all desktops; empty where not stated.
  std::optional<std::uint32_t> desktop;
};
WindowFacts readWindowFacts(X11Connection& connection, xcb_window_t window);

/// Returns the program's own window within a window manager's frames, or the window itself where
/// there is none.
xcb_window_t clientWithin(X11Connection& connection, xcb_window_t window);

}  // namespace vembrix
