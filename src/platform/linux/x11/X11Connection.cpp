#include "platform/linux/x11/X11Connection.h"

namespace vembrix {

std::unique_ptr<X11Connection> X11Connection::open() {
  int screen = 0;
  xcb_connection_t* connection = xcb_connect(nullptr, &screen);
  if (xcb_connection_has_error(connection) != 0) {
    xcb_disconnect(connection);
    return nullptr;
  }
  std::unique_ptr<X11Connection> result(new X11Connection);
  result->screen_ = screen;
  xcb_ewmh_connection_t& ewmh = result->ewmh_;
  xcb_intern_atom_cookie_t* cookies = xcb_ewmh_init_atoms(connection, &ewmh);
  // This call also frees the cookies.
  const bool ready = xcb_ewmh_init_atoms_replies(&ewmh, cookies, nullptr) != 0;
  if (!ready || screen < 0 || screen >= ewmh.nb_screens) return nullptr;
  result->root_ = ewmh.screens[screen]->root;
  return result;
}

X11Connection::~X11Connection() {
  xcb_disconnect(xcb());
  xcb_ewmh_connection_wipe(&ewmh_);
}

}  // namespace vembrix
