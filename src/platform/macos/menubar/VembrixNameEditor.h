#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/Arc.h"

/// Edits the name of a row in an open menu: sees to it that key presses reach the text,
/// tells the handler of those that are the row's, and draws the caret where AppKit draws
/// none. NameEditing decides; this is its way to AppKit. Main thread. Owned by the row,
/// which it holds weakly.
@interface VembrixNameEditor : NSObject <NSTextFieldDelegate>

/// `field` is a part of `row`, and hidden. The handler stays the caller's, who
/// invalidates the editor before the handler goes.
- (instancetype)initWithField:(NSTextField*)field
                          row:(NSView*)row
                      handler:(vembrix::SpaceRowHandler*)handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Shows the field with the text and gives it the keyboard, now or as soon as the row
/// comes into a window.
- (void)beginWithText:(NSString*)text;
/// The text's window has the keyboard again, the field is hidden. Does nothing where
/// nothing is edited.
- (void)end;
/// To be called again and again while the menu is open.
- (void)look;
/// The row has come into a window while it is edited.
- (void)rowDidEnterWindow;
/// The row is about to leave its window.
- (void)rowWillLeaveWindow;
/// Nobody is told anything any more, and nothing runs on.
- (void)invalidate;

/// Whether the key press was a command of an Edit menu and was carried out on the text.
- (BOOL)performEditCommand:(NSEvent*)event;

@property(nonatomic, readonly) NSString* text;

@end
