#pragma once

#include <QRect>
#include <QSize>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/PropertyList.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/linux/x11/X11EventReader.h"

namespace vembrix {

/// The windows on the screen, in the form of the window server's window list. A model of the root
/// window's children that the X server's events keep up to date: a query costs no round trip, and
/// no time while the list is unchanged. Hidden windows, and those smaller than half of every
/// screen, are neither listed nor queried. Main thread; needs a Qt application.
class WindowList {
 public:
  explicit WindowList(X11Desktop& desktop);
  WindowList(const WindowList&) = delete;
  WindowList& operator=(const WindowList&) = delete;

  /// Returns the windows on the current desktop, front to back, as WindowServer does. The options
  /// choose whether desktop backgrounds count.
  [[nodiscard]] PropertyList list(std::uint32_t options);

 private:
  struct Window {
    /// The child of the root: a window manager's frame, or a window without one.
    xcb_window_t id = XCB_WINDOW_NONE;
    QRect pixels;
    bool isMapped = false;
    /// Whether the members below must be read (again).
    bool isStale = false;
    /// The program's own window: within the frame, or the same as `id`.
    xcb_window_t client = XCB_WINDOW_NONE;
    /// Empty if unknown.
    std::string owner;
    bool isDesktopElement = false;
    /// Whether it takes input only and is invisible.
    bool isInvisible = false;
    /// Empty if not stated.
    std::optional<std::uint32_t> desktop;
  };
  using Windows = std::vector<Window>;

  void readAll();
  void note(const xcb_generic_event_t& event);
  void noteConfiguration(const xcb_configure_notify_event_t& event);
  void noteReparenting(const xcb_reparent_notify_event_t& event);
  void noteProperty(const xcb_property_notify_event_t& event);
  void setMapped(xcb_window_t id, bool isMapped);
  Windows::iterator find(xcb_window_t id);
  void add(xcb_window_t id, const QRect& pixels);
  void remove(xcb_window_t id);
  /// Moves the window directly above `sibling`, or to the bottom if there is none.
  void restack(xcb_window_t id, xcb_window_t sibling);

  void refresh();
  void read(Window& window);
  /// Returns whether the window is large enough to be listed.
  [[nodiscard]] bool isLarge(const Window& window) const;
  /// To be called for each change of a listed window.
  void forgetAnswers(const Window& window);

  [[nodiscard]] bool isOnScreen(const Window& window) const;
  [[nodiscard]] PropertyList build(bool withDesktopElements) const;

  const X11Desktop& desktop_;
  X11EventReader& events_;
  X11Connection& connection_;
  Token listening_;
  /// Back to front.
  Windows windows_;
  /// Half of the smallest screen, in pixels.
  QSize large_;
  /// Whether a window has changed since the stale ones were last read.
  bool hasNews_ = false;

  /// The answer with desktop elements, and the one without.
  std::array<std::optional<PropertyList>, 2> answers_;
  X11Desktop::SpaceID answeredSpace_ = 0;
};

}  // namespace vembrix
