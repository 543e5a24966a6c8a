#pragma once

#include <xcb/xcb_ewmh.h>

#include <cstdlib>
#include <memory>

namespace vembrix {

/// Memory that xcb hands over.
struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbPtr = std::unique_ptr<T, XcbFree>;

/// What the event is about, whether the server or another program has sent it.
inline int eventType(const xcb_generic_event_t& event) {
  constexpr int kSentEvent = 0x80;
  return event.response_type & ~kSentEvent;
}

/// A connection to the X server of the session, of the program's own beside
/// Qt's, with the atoms that window managers and their clients agree on. Main
/// thread.
class X11Connection {
 public:
  /// Null when no display answers.
  static std::unique_ptr<X11Connection> open();

  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  [[nodiscard]] xcb_connection_t* xcb() const { return ewmh_.connection; }
  [[nodiscard]] xcb_ewmh_connection_t* ewmh() { return &ewmh_; }
  /// The number of the default screen, and its root window.
  [[nodiscard]] int screen() const { return screen_; }
  [[nodiscard]] xcb_window_t root() const { return root_; }

  /// Whether the server is gone; once so, always so.
  [[nodiscard]] bool isBroken() const { return xcb_connection_has_error(xcb()) != 0; }

 private:
  X11Connection() = default;

  xcb_ewmh_connection_t ewmh_{};
  int screen_ = 0;
  xcb_window_t root_ = XCB_WINDOW_NONE;
};

}  // namespace vembrix
