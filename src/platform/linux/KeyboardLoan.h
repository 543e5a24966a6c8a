#pragma once

#include <cstdint>

class QWindow;

namespace vembrix {

/// Gives the keyboard focus of the display to a window that no window manager
/// looks after, as an open menu is, for as long as the loan lasts, and then back
/// to whichever program had it. A menu gets key presses without, but not what
/// input methods and dead keys make of them. On a platform without X11 nothing
/// happens. Main thread.
class KeyboardLoan {
 public:
  /// The window must be on the screen, and outlive the loan.
  explicit KeyboardLoan(QWindow& window);
  ~KeyboardLoan();
  KeyboardLoan(const KeyboardLoan&) = delete;
  KeyboardLoan& operator=(const KeyboardLoan&) = delete;

 private:
  QWindow& window_;
  /// An id of the X server's; 0 where nobody had it.
  std::uint32_t lender_ = 0;
};

}  // namespace vembrix
