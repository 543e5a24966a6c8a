#pragma once

#include "platform/DropdownMenu.h"

class QMenu;
class QRect;

namespace vembrix {

/// What every DropdownMenu of this platform is besides.
class NativeMenu : public DropdownMenu {
 public:
  /// What the user has opened it with. Without a click nothing says that the
  /// keyboard is free: the key that was pressed may still be held.
  enum class OpenedBy { Click, Keyboard };

  /// Lives as long as this.
  virtual QMenu& widget() = 0;

  /// Opens it below the item, or above one at the bottom of its screen; nothing without
  /// items. Qt's coordinates.
  virtual void open(const QRect& item, OpenedBy way) = 0;
};

}  // namespace vembrix
