#pragma once

#include <xcb/xcb_ewmh.h>

#include <string_view>

namespace vembrix {

/// EWMH over Qt's own connection to the X server, so that requests about a window stay in order
/// with Qt's. Null on a Qt platform without X11. Main thread; needs a Qt application.
xcb_ewmh_connection_t* ewmhOfQt();

/// Returns the atom of a name that EWMH does not define. Needs X11. Asks the X server and waits:
/// callers keep the result.
xcb_atom_t atomOfQt(std::string_view name);

}  // namespace vembrix
