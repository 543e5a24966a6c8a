#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#import "platform/macos/support/Arc.h"

/// A view that consists of its layer: a background, a rounded border, or a line. Owns its colours;
/// system colours follow its effective appearance.
@interface VembrixLayerView : NSView

/// Nil for none.
@property(nonatomic, copy) NSColor* fill;
/// Drawn inside the edge, over the fill and the subviews; nil for none.
@property(nonatomic, copy) NSColor* stroke;
/// In points.
@property(nonatomic) CGFloat strokeWidth;
/// In points; clips the subviews.
@property(nonatomic) CGFloat cornerRadius;

@end

/// A linear gradient from the top to the bottom. Owns its gradient.
@interface VembrixGradientView : NSView

- (instancetype)initWithColors:(NSArray<NSColor*>*)colors NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
/// Ends the process.
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// Nil if there are no colours.
@property(nonatomic, readonly) NSGradient* gradient;

@end

namespace vembrix {

/// Nil for none.
NSView* makeBackdrop(const Backdrop& backdrop);

/// Adds the view and pins its edges to the container's.
void pinToEdges(NSView* view, NSView* container);

}  // namespace vembrix
