#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/Arc.h"

// They belong to the page that shows them, and own nothing besides what AppKit gives
// them.

/// A text of several lines that wraps to whatever width the layout gives it.
@interface VembrixWrappingLabel : NSTextField
@end

/// What a page scrolls. Its origin is at the top left, so that a short page stands
/// at the top.
@interface VembrixFlippedDocumentView : NSView
@end

/// A button without a border, under a pointing hand.
@interface VembrixLinkButton : NSButton
@end
