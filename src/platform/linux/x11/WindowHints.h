#pragma once

#include <xcb/xcb_ewmh.h>

#include <array>
#include <cstdint>

#include "platform/linux/support/Strut.h"

class QPoint;
class QString;
class QWindow;

namespace vembrix {

// Hints for window managers that Qt does not set. Each call needs a native window and does nothing
// without X11. Main thread.

/// The desktop number of a window that is on all desktops.
inline constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;

/// The states of a window that is a part of the desktop.
std::array<xcb_atom_t, 3> dockStates(const xcb_ewmh_connection_t& atoms);

/// Makes the window a part of the desktop, like a panel: no frame, on all desktops, in no task bar
/// and no pager. To be called before it is shown.
void makeDock(QWindow& window);

/// Repeats makeDock() for a shown window that has lost these properties.
void restoreDock(QWindow& window);

/// Makes the window a dialog of fixed size, which tiling window managers leave floating. To be
/// called before it is shown.
void makeDialog(QWindow& window);

/// Hides the window from task bars and pagers. To be called before it is shown.
void hideFromTaskLists(QWindow& window);

/// Returns the top left corner on the X server's screen, in pixels; the origin where the server
/// does not answer. Asks it and waits.
QPoint originInPixels(QWindow& window);

/// Returns whether the window manager lists or frames the window, and so controls its stacking.
/// Asks the X server and waits.
bool isManaged(QWindow& window);

/// Sets the window's name. The request is sent with the next ones.
void setName(QWindow& window, const QString& name);

/// Gives window managers that track the time of the last event a later one than any request so far,
/// so that their next action, such as giving a window the keyboard, is not refused as outdated.
/// They must manage the window.
void updateUserTime(QWindow& window);

/// Sets the space that the window reserves.
void setStrut(QWindow& window, const Strut& strut);

/// Brings a shown window to the active desktop, in front of all others, with the keyboard. Asks the
/// window manager as a pager does, as programs that ask for themselves are often refused.
void bringToFront(QWindow& window);

}  // namespace vembrix
