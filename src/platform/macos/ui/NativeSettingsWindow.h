#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

/// The SettingsWindow of this platform, as the preview canvas uses it.
class NativeSettingsWindow : public SettingsWindow {
 public:
  /// The native window, owned by this object.
  [[nodiscard]] virtual NSWindow* nativeWindow() const = 0;
};

}  // namespace vembrix
