#pragma once

#import <AppKit/AppKit.h>

#include "platform/TourOverlay.h"
#import "platform/macos/Arc.h"

/// A panel with round ends, and in its middle a spinner that turns and a line of text.
/// All colours are fixed. Belongs to its window; reaches back to nobody.
@interface VembrixTourOverlayView : NSView

- (instancetype)initWithContent:(const vembrix::TourOverlayContent&)content;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)init NS_UNAVAILABLE;

@end
