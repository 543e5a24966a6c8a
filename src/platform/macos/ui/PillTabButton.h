#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#import "platform/macos/support/Arc.h"

/// A themed tab button; its tag is the tab's index. Its layer draws a rounded background, or a line
/// under the text. Holds its target weakly.
@interface VembrixPillTabButton : NSButton

/// Sets the look.
- (void)show:(const vembrix::TabButton&)look;

@end
