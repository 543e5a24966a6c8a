#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/Arc.h"

/// The caret of a text that is edited in an open menu, for where AppKit draws none.
/// Stands in the text view, follows its selection and blinks. Main thread.
@interface VembrixCaret : NSView

- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// In place of AppKit's, which is not seen until hide.
- (void)showIn:(NSTextView*)editor;
/// Leaves the text view as it was. Does nothing when the caret is in none.
- (void)hide;

@end
