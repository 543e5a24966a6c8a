#pragma once

#import <AppKit/AppKit.h>

#include "platform/TourOverlay.h"
#import "platform/macos/support/Arc.h"

/// A panel with round ends and, centred in it, a turning spinner and a line of text. All colours
/// are fixed. Owned by its window, to which it holds no reference.
@interface VembrixTourOverlayView : NSView

- (instancetype)initWithContent:(const vembrix::TourOverlayContent&)content;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)init NS_UNAVAILABLE;

@end
