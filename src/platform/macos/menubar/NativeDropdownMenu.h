#pragma once

#import <AppKit/AppKit.h>

#include "platform/DropdownMenu.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

/// The DropdownMenu of this platform, as the status item uses it to pass the native menu to the
/// system.
class NativeDropdownMenu : public DropdownMenu {
 public:
  /// The native menu, owned by this object.
  [[nodiscard]] virtual NSMenu* nativeMenu() const = 0;
  [[nodiscard]] virtual bool isOpen() const = 0;
  /// Number of times that the menu has opened.
  [[nodiscard]] virtual int openings() const = 0;
};

}  // namespace vembrix
