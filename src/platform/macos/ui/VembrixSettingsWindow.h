#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/Arc.h"

/// A window that Escape closes, and that scrolls the control with the keyboard into
/// view. It does not release itself when it is closed: SystemSettingsWindow owns it
/// and clears the block before it goes.
@interface VembrixSettingsWindow : NSWindow

/// `size` is without the title bar, in points.
- (instancetype)initWithContentSize:(NSSize)size title:(NSString*)title;

/// Called after the window was closed. Nil for nothing.
@property(nonatomic, copy) void (^closeHandler)(void);

@end
