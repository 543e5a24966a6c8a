#pragma once

#include <xcb/xcb_ewmh.h>

#include <string_view>

namespace vembrix {

/// EWMH over Qt's own connection to the X server, so that what is said of a
/// window arrives between what Qt says of it. Null on a Qt platform without
/// X11. Main thread; needs a Qt application.
xcb_ewmh_connection_t* ewmhOfQt();

/// The atom of a name that EWMH does not have, where there is X11. Asks the X server and
/// waits: once for each name is enough.
xcb_atom_t atomOfQt(std::string_view name);

}  // namespace vembrix
