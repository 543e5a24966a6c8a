#pragma once

#include "platform/DropdownMenu.h"

class QMenu;

namespace vembrix {

/// What every DropdownMenu of this platform is besides.
class NativeMenu : public DropdownMenu {
 public:
  /// Lives as long as this.
  virtual QMenu& widget() = 0;
};

}  // namespace vembrix
