#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/Arc.h"

/// Shows what it is told, and tells the handler what the user does. Owns its parts, its
/// timer and its name editor, which both hold it weakly; SystemSpaceRowView owns it and
/// the handler.
@interface VembrixSpaceRowView : NSView

/// The handler stays the caller's, who invalidates the row before the handler
/// goes.
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
/// Nobody is told anything any more, and nothing runs on.
- (void)invalidate;

@property(nonatomic, readonly) NSString* editedText;
@property(nonatomic, readonly) BOOL isEditing;

@end
