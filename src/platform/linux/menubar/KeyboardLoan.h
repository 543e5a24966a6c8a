#pragma once

#include <cstdint>

class QWindow;

namespace vembrix {

/// While it lives, gives the display's keyboard focus to a window that no window manager manages,
/// such as an open menu; then returns it to the program that had it. Without the focus a menu gets
/// key presses, but no input from input methods and dead keys. Does nothing without X11. Main
/// thread.
class KeyboardLoan {
 public:
  /// The window must be on the screen, and outlive the loan.
  explicit KeyboardLoan(QWindow& window);
  ~KeyboardLoan();
  KeyboardLoan(const KeyboardLoan&) = delete;
  KeyboardLoan& operator=(const KeyboardLoan&) = delete;

 private:
  QWindow& window_;
  /// The window that had the focus; 0 if there was none.
  std::uint32_t lender_ = 0;
};

}  // namespace vembrix
