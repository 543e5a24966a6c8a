#pragma once

#import <AppKit/AppKit.h>

#include "platform/SignWindow.h"
#import "platform/macos/support/Arc.h"

/// A panel with round corners and one centred line of text, drawn by its layer and its text field.
/// All colours are fixed, so that it looks the same in light and dark. Owned by its window, to
/// which it holds no reference.
@interface VembrixSignView : NSView

/// Creates a view without text. Lengths are in points.
- (instancetype)initWithFrame:(NSRect)frame
                 cornerRadius:(CGFloat)cornerRadius
                      padding:(CGFloat)padding;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)init NS_UNAVAILABLE;

@property(nonatomic, readonly) NSTextField* label;

- (void)show:(const vembrix::SignLook&)look;

@end
