#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#import "platform/macos/Arc.h"

/// A tab of the program's own look. Its tag is the place of the tab. Draws on its
/// layer: a rounded ground, or a line under the text. Owns how it looks; what it does
/// is its target's, which it holds weakly.
@interface VembrixPillTabButton : NSButton

/// Looks as stated, in place of how it looked before.
- (void)show:(const vembrix::TabButton&)look;

@end
