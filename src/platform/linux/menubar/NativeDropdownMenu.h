#pragma once

#include "platform/DropdownMenu.h"

class QMenu;
class QRect;

namespace vembrix {

/// The DropdownMenu of this platform, as other faces use it.
class NativeDropdownMenu : public DropdownMenu {
 public:
  /// How the user opened the menu. After a key press the key may still be held, so the keyboard may
  /// not be free.
  enum class OpenedBy { Click, Keyboard };

  /// The menu's widget, which lives as long as this object.
  virtual QMenu& widget() = 0;

  /// Opens the menu below the item, or above an item at the bottom of its screen, in Qt's
  /// coordinates. Does nothing without items.
  virtual void open(const QRect& item, OpenedBy way) = 0;
};

}  // namespace vembrix
