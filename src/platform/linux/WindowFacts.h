#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/X11Connection.h"

namespace vembrix {

// What a window of another program says of itself. Each call asks the X server
// and waits; a window that is gone says nothing.

struct WindowFacts {
  /// The program's name by its window class, else that of its process; "Dock"
  /// for a program that shows all windows at once, as the system's Dock does.
  /// Empty where nobody tells.
  std::string owner;
  /// The desktop's background and icons.
  bool isDesktopElement = false;
  /// Takes input only and shows nothing.
  bool isInvisible = false;
  /// From 0; all ones for all desktops; nothing where it is not said.
  std::optional<std::uint32_t> desktop;
};
WindowFacts readWindowFacts(X11Connection& connection, xcb_window_t window);

/// The program's own window within the frames that a window manager has put
/// around it, or the window itself where there is no such.
xcb_window_t clientWithin(X11Connection& connection, xcb_window_t window);

}  // namespace vembrix
