#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

/// The settings window on macOS, as the preview canvas uses it.
class NativeSettingsWindow : public SettingsWindow {
 public:
  /// Owned by this object.
  [[nodiscard]] virtual NSWindow* nativeWindow() const = 0;
};

}  // namespace vembrix
