#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsWindow.h"
#import "platform/macos/Arc.h"

/// A view that is only its layer: a ground, a rounded border, or a line. Colours of
/// the system follow the appearance in effect for the view, which owns them.
@interface VembrixLayerView : NSView

/// Nil for none.
@property(nonatomic, copy) NSColor* fill;
/// Inside the edge, over the fill and the subviews; nil for none.
@property(nonatomic, copy) NSColor* stroke;
/// In points.
@property(nonatomic) CGFloat strokeWidth;
/// In points; subviews are clipped by it.
@property(nonatomic) CGFloat cornerRadius;

@end

/// A linear wash from the top to the bottom. Owns its gradient.
@interface VembrixGradientView : NSView

- (instancetype)initWithColors:(NSArray<NSColor*>*)colors NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
/// Stops the program.
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// Nil, which draws nothing, when there are no colours.
@property(nonatomic, readonly) NSGradient* gradient;

@end

namespace vembrix {

/// Nil for none.
NSView* makeBackdrop(const Backdrop& backdrop);

/// Adds the view and keeps its edges on those of the container.
void pinToEdges(NSView* view, NSView* container);

}  // namespace vembrix
