#pragma once

#include <QRect>

class QWindow;

namespace vembrix {

// What Qt does not tell a window manager about the program's windows. Each call
// needs a native window; on a platform without X11 it does nothing. Main thread.

/// The window is a part of the desktop, like a panel: no frame, no task, above
/// other windows. Before it is shown.
void makeDock(QWindow& window);

/// The window is on all desktops. Before it is shown.
void showOnAllDesktops(QWindow& window);

/// The window is listed in no task bar and no pager. Before it is shown.
void hideFromTaskLists(QWindow& window);

/// Maximised windows leave the edge of the screen above the window free, over
/// the window's own width. `geometry`: the window's, as Qt counts.
void reserveTopEdge(QWindow& window, const QRect& geometry);

/// Brings a window that is shown to the desktop that the user sees, before all others,
/// with the keyboard. The window manager is asked as a pager asks: a program that asks
/// for itself is often refused.
void bringToFront(QWindow& window);

}  // namespace vembrix
