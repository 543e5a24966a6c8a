#pragma once

#include <xcb/xcb_ewmh.h>

namespace vembrix {

/// EWMH over Qt's own connection to the X server, so that what is said of a
/// window arrives between what Qt says of it. Null on a Qt platform without
/// X11. Main thread; needs a Qt application.
xcb_ewmh_connection_t* ewmhOfQt();

}  // namespace vembrix
