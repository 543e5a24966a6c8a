#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#include "platform/macos/Arc.h"

namespace vembrix {

/// What every settings window is on macOS: for pictures of what it holds.
class NativeSettingsWindow : public SettingsWindow {
 public:
  /// Owned by this object.
  [[nodiscard]] virtual NSWindow* nativeWindow() const = 0;
};

}  // namespace vembrix
