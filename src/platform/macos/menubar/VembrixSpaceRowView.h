#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/support/Arc.h"

/// Shows a row's state and reports the user's input to the handler. Owns its parts, its timer and
/// its name editor, which hold weak references to it; SystemSpaceRowView owns this view and the
/// handler.
@interface VembrixSpaceRowView : NSView

/// The caller owns the handler and invalidates the row before the handler's end.
- (instancetype)initWithContent:(const vembrix::SpaceRowContent&)content
                          state:(const vembrix::SpaceRowState&)state
                        handler:(vembrix::SpaceRowHandler*)handler NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
- (instancetype)init NS_UNAVAILABLE;

- (void)show:(const vembrix::SpaceRowState&)state;
- (void)setHighlighted:(BOOL)isHighlighted;
/// The action of the row's menu item.
- (void)activate:(id)sender;
- (void)closeMenu;
/// Ends all callbacks and timers.
- (void)invalidate;

@property(nonatomic, readonly) NSString* editedText;
@property(nonatomic, readonly) BOOL isEditing;

@end
