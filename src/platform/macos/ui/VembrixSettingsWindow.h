#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

/// A window that Escape closes and that scrolls the focused control into view. Does not release
/// itself when closed: SystemSettingsWindow owns it and clears the block before its own end.
@interface VembrixSettingsWindow : NSWindow

/// `size` excludes the title bar, in points.
- (instancetype)initWithContentSize:(NSSize)size title:(NSString*)title;

/// Called after the window was closed; may be nil.
@property(nonatomic, copy) void (^closeHandler)(void);

@end
