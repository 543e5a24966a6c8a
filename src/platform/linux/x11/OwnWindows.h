#pragma once

#include <QObject>
#include <unordered_set>

#include "platform/linux/x11/X11EventReader.h"

namespace vembrix {

/// Tracks whether the user's input goes to a window of this program, from the X server's events and
/// without asking it. These events come over the same connection as the input, so their order is
/// right: when a click arrives just after the pointer has entered a window, that is known already.
/// Main thread; needs a Qt application.
class OwnWindows : public QObject {
 public:
  explicit OwnWindows(X11EventReader& reader);

  /// To be called for each event of that connection.
  void note(const xcb_generic_event_t& event);

  /// Returns whether mouse input goes to one of them: the pointer is over it, or it is an open
  /// menu, which takes all input.
  [[nodiscard]] bool havePointer() const;
  /// Returns whether key presses go to one of them.
  [[nodiscard]] bool haveKeyboard() const;

  /// Notices new windows, which only Qt reports.
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
