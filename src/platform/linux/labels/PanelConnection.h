#pragma once

#include <memory>
#include <unordered_set>

#include "platform/linux/X11Connection.h"

namespace vembrix {

/// The X server as the panels' windows have it: a connection of their own, since who
/// kills a window ends the connection that it belongs to. Asks the server only when it
/// is opened. Main thread.
class PanelConnection {
 public:
  /// The one that is in use, opened where there is none or another program has ended
  /// it. Null on a Qt platform without X11, and when no server answers.
  static std::shared_ptr<PanelConnection> current();

  explicit PanelConnection(std::unique_ptr<X11Connection> connection);

  [[nodiscard]] xcb_connection_t* xcb() const { return connection_->xcb(); }
  [[nodiscard]] xcb_ewmh_connection_t* ewmh() const { return connection_->ewmh(); }
  [[nodiscard]] xcb_window_t root() const { return connection_->root(); }
  [[nodiscard]] bool isBroken() const { return connection_->isBroken(); }

  /// What the windows look like: with 32 bits they are translucent.
  struct Format {
    std::uint8_t depth = 0;
    xcb_visualid_t visual = 0;
    xcb_colormap_t colors = XCB_NONE;
  };
  [[nodiscard]] const Format& format() const { return format_; }

  struct Atoms {
    xcb_atom_t role = XCB_ATOM_NONE;
    xcb_atom_t opacity = XCB_ATOM_NONE;
    xcb_atom_t shadow = XCB_ATOM_NONE;
    xcb_atom_t frameExtents = XCB_ATOM_NONE;
    xcb_atom_t onScreenDisplay = XCB_ATOM_NONE;
  };
  [[nodiscard]] const Atoms& atoms() const { return atoms_; }

  /// A window of ours was made; whether it is still there, as far as the server has told.
  void add(xcb_window_t window) { windows_.insert(window); }
  [[nodiscard]] bool has(xcb_window_t window);
  void remove(xcb_window_t window) { windows_.erase(window); }

  void flush() { xcb_flush(xcb()); }

 private:
  void chooseFormat();
  void readAtoms();
  void readEvents();

  std::unique_ptr<X11Connection> connection_;
  Format format_;
  Atoms atoms_;
  std::unordered_set<xcb_window_t> windows_;
};

}  // namespace vembrix
