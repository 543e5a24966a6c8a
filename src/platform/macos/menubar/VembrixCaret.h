#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

/// A caret for text edited in an open menu where AppKit draws none. A subview of the text view that
/// follows its selection and blinks. Main thread.
@interface VembrixCaret : NSView

- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// Replaces AppKit's caret until hide.
- (void)showIn:(NSTextView*)editor;
/// Restores the text view. Does nothing if the caret is in none.
- (void)hide;

@end
