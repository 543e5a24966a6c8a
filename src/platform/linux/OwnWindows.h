#pragma once

#include <QObject>
#include <unordered_set>

#include "platform/linux/X11EventReader.h"

namespace vembrix {

/// Knows whether the user's input goes to a window of this program, from the
/// events in which the X server says so, without asking it. They come over the
/// same connection as the input that they are about, so that their order is
/// true: a click just after the pointer came into a window finds it there. Main
/// thread; needs a Qt application.
class OwnWindows : public QObject {
 public:
  explicit OwnWindows(X11EventReader& reader);

  /// An event of that connection.
  void note(const xcb_generic_event_t& event);

  /// Whether what is done with the mouse goes to one of them: the pointer is
  /// over it, or it is an open menu, which takes all input.
  [[nodiscard]] bool havePointer() const;
  /// Likewise what is typed.
  [[nodiscard]] bool haveKeyboard() const;

  /// Qt alone tells of windows that come.
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void follow(xcb_window_t window);
  void leave(xcb_window_t window);
  void askWhereInputGoes();

  X11EventReader& reader_;
  std::unordered_set<xcb_window_t> windows_;
  xcb_window_t pointerWindow_ = XCB_WINDOW_NONE;
  xcb_window_t focusWindow_ = XCB_WINDOW_NONE;
};

}  // namespace vembrix
