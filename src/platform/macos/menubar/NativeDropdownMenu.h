#pragma once

#import <AppKit/AppKit.h>

#include "platform/DropdownMenu.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

/// The dropdown menu on macOS, as the status item, which passes the native menu to the system, uses
/// it.
class NativeDropdownMenu : public DropdownMenu {
 public:
  /// Owned by this object.
  [[nodiscard]] virtual NSMenu* nativeMenu() const = 0;
  [[nodiscard]] virtual bool isOpen() const = 0;
  /// Number of times that the menu has opened.
  [[nodiscard]] virtual int openings() const = 0;
};

}  // namespace vembrix
