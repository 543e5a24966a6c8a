#pragma once

#import <AppKit/AppKit.h>

#include "platform/SignWindow.h"
#import "platform/macos/Arc.h"

/// A panel with round corners and one line of text in its middle. Draws nothing
/// itself: its layer and its text field do. All colours are fixed, so that it looks the
/// same in light and dark. Belongs to its window; reaches back to nobody.
@interface VembrixSignView : NSView

/// Without text. Lengths in points.
- (instancetype)initWithFrame:(NSRect)frame
                 cornerRadius:(CGFloat)cornerRadius
                      padding:(CGFloat)padding;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)init NS_UNAVAILABLE;

@property(nonatomic, readonly) NSTextField* label;

- (void)show:(const vembrix::SignLook&)look;

@end
