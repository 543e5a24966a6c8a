#pragma once

#include <memory>
#include <unordered_set>

#include "platform/linux/x11/X11Connection.h"

namespace vembrix {

/// The panels' own connection to the X server. It is separate because a program that kills a window
/// ends that window's connection. Waits for the server only when it is opened. Main thread.
class PanelConnection {
 public:
  /// Returns the connection in use; opens one if there is none or another program has ended it.
  /// Null on a Qt platform without X11, and if no server answers.
  static std::shared_ptr<PanelConnection> current();

  explicit PanelConnection(std::unique_ptr<X11Connection> connection);

  [[nodiscard]] xcb_connection_t* xcb() const { return connection_->xcb(); }
  [[nodiscard]] xcb_ewmh_connection_t* ewmh() const { return connection_->ewmh(); }
  [[nodiscard]] xcb_window_t root() const { return connection_->root(); }
  [[nodiscard]] bool isBroken() const { return connection_->isBroken(); }

  /// The pixel format of the windows; with 32 bits they can be translucent.
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

  /// Tracks the program's windows; has() returns whether one exists, as far as the server has
  /// reported.
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
