#pragma once

#include <xcb/xcb_ewmh.h>

#include <cstdlib>
#include <memory>

namespace vembrix {

/// Frees memory that xcb hands over.
struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbPtr = std::unique_ptr<T, XcbFree>;

/// Returns the event's type, regardless of whether the server or another program has sent it.
inline int eventType(const xcb_generic_event_t& event) {
  constexpr int kSentEvent = 0x80;
  return event.response_type & ~kSentEvent;
}

/// The program's own connection to the session's X server, beside Qt's, with the atoms of EWMH.
/// Main thread.
class X11Connection {
 public:
  /// Null if no display answers.
  static std::unique_ptr<X11Connection> open();

  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  [[nodiscard]] xcb_connection_t* xcb() const { return ewmh_.connection; }
  [[nodiscard]] xcb_ewmh_connection_t* ewmh() { return &ewmh_; }
  /// The number of the default screen, and its root window.
  [[nodiscard]] int screen() const { return screen_; }
  [[nodiscard]] xcb_window_t root() const { return root_; }

  /// Returns whether the server is gone, for good.
  [[nodiscard]] bool isBroken() const { return xcb_connection_has_error(xcb()) != 0; }

 private:
  X11Connection() = default;

  xcb_ewmh_connection_t ewmh_{};
  int screen_ = 0;
  xcb_window_t root_ = XCB_WINDOW_NONE;
};

}  // namespace vembrix
