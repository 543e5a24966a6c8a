#pragma once

#include <xcb/xcb_ewmh.h>

#include <array>
#include <cstdint>

#include "platform/linux/Strut.h"

class QPoint;
class QWindow;

namespace vembrix {

// What Qt does not tell a window manager about the program's windows. Each call
// needs a native window; on a platform without X11 it does nothing. Main thread.

/// The number of a window's desktop that is on all of them.
inline constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;

/// The states of a window that is a part of the desktop.
std::array<xcb_atom_t, 3> dockStates(const xcb_ewmh_connection_t& atoms);

/// The window is a part of the desktop, like a panel: no frame, on all desktops, in no
/// task bar and no pager. Before it is shown.
void makeDock(QWindow& window);

/// Tells it again of a window that is shown, where somebody has taken it away.
void restoreDock(QWindow& window);

/// The window keeps its size, as a dialog: window managers that tile leave it afloat.
/// Before it is shown.
void makeDialog(QWindow& window);

/// The window is listed in no task bar and no pager. Before it is shown.
void hideFromTaskLists(QWindow& window);

/// The top left corner on the X server's screen, in pixels, by the X server's own word.
/// Asks it and waits. The origin where it does not answer.
QPoint originInPixels(QWindow& window);

/// Whether the window manager lists the window or has framed it, and so decides what it
/// covers. Asks the X server and waits.
bool isManaged(QWindow& window);

/// Gives window managers that keep the time of the last event a later one than that of
/// any request so far: what they do next, as giving a window the keyboard, is not refused
/// as outdated. The window must be one that they manage.
void tellTime(QWindow& window);

/// What windows keep clear of.
void setStrut(QWindow& window, const Strut& strut);

/// Brings a window that is shown to the desktop that the user sees, before all others,
/// with the keyboard. The window manager is asked as a pager asks: a program that asks
/// for itself is often refused.
void bringToFront(QWindow& window);

}  // namespace vembrix
