#pragma once

#import <AppKit/AppKit.h>

#include "platform/DropdownMenu.h"
#include "platform/macos/Arc.h"

namespace vembrix {

/// What every dropdown menu is on macOS: for the status item, which hands the
/// native menu to the system.
class NativeDropdownMenu : public DropdownMenu {
 public:
  /// Owned by this object.
  [[nodiscard]] virtual NSMenu* nativeMenu() const = 0;
  [[nodiscard]] virtual bool isOpen() const = 0;
  /// How often the menu has opened so far.
  [[nodiscard]] virtual int openings() const = 0;
};

}  // namespace vembrix
