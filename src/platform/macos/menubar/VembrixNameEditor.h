#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/support/Arc.h"

/// Edits the name of a row in an open menu: passes key presses to the text or, if the row uses
/// them, to the handler, and draws the caret if AppKit draws none. The AppKit side of NameEditing,
/// which decides. Main thread. Owned by the row, to which it holds a weak reference.
@interface VembrixNameEditor : NSObject <NSTextFieldDelegate>

/// `field` is a hidden part of `row`. The caller owns the handler and invalidates the editor before
/// the handler's end.
- (instancetype)initWithField:(NSTextField*)field
                          row:(NSView*)row
                      handler:(vembrix::SpaceRowHandler*)handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Shows the field with the text and gives it the keyboard, now or as soon as the row enters a
/// window.
- (void)beginWithText:(NSString*)text;
/// Hides the field and returns the keyboard to its window. Does nothing if no text is being edited.
- (void)end;
/// To be called at intervals while the menu is open.
- (void)look;
/// To be called when the row has entered a window while it is being edited.
- (void)rowDidEnterWindow;
/// To be called before the row leaves its window.
- (void)rowWillLeaveWindow;
/// Ends all callbacks and timers.
- (void)invalidate;

/// Performs a command of an Edit menu on the text. Returns whether the key press was one.
- (BOOL)performEditCommand:(NSEvent*)event;

@property(nonatomic, readonly) NSString* text;

@end
