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

/// A well that adds colours of its own to those of the colour panel while it is active.
@interface VembrixColorWell : NSColorWell
/// Called whenever the well becomes active.
@property(copy) NSColorList* (^swatches)(void);
@end

/// A button without a border, under a pointing hand.
@interface VembrixLinkButton : NSButton
@end
