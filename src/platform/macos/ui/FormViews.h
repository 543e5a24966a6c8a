#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

// Owned by the page that shows them.

/// A text of several lines that wraps to whatever width the layout gives it.
@interface VembrixWrappingLabel : NSTextField
@end

/// The scrolled view of a page. Its origin is at the top left, so that a short page stays at the
/// top.
@interface VembrixFlippedDocumentView : NSView
@end

/// A button without a border, under a pointing hand.
@interface VembrixLinkButton : NSButton
@end
