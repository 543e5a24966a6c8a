#import "platform/macos/labels/VembrixSignView.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/macos/support/CoderUnsupported.h"
#import "platform/macos/support/Conversions.h"

using namespace vembrix;

@implementation VembrixSignView {
  SignLook _look;
  CGFloat _cornerRadius;
}

- (instancetype)initWithFrame:(NSRect)frame
                 cornerRadius:(CGFloat)cornerRadius
                      padding:(CGFloat)padding {
  self = [super initWithFrame:frame];
  if (!self) return nil;
  _cornerRadius = cornerRadius;
  self.wantsLayer = YES;
  self.layerContentsRedrawPolicy = NSViewLayerContentsRedrawOnSetNeedsDisplay;
  [self addLabelWithPadding:padding];
  [self show:_look];
  return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  coderIsUnsupported();
}

- (void)addLabelWithPadding:(CGFloat)padding {
  _label = [NSTextField labelWithString:@""];
  _label.alignment = NSTextAlignmentCenter;
  _label.usesSingleLineMode = YES;
  _label.maximumNumberOfLines = 1;
  _label.lineBreakMode = NSLineBreakByTruncatingTail;
  _label.translatesAutoresizingMaskIntoConstraints = NO;
  // Weaker than the constraints that hold the window's size, so that a long text is truncated
  // instead of widening the window.
  [_label setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                   forOrientation:NSLayoutConstraintOrientationHorizontal];
  [self addSubview:_label];
  [NSLayoutConstraint activateConstraints:@[
    [_label.centerXAnchor constraintEqualToAnchor:self.centerXAnchor],
    [_label.centerYAnchor constraintEqualToAnchor:self.centerYAnchor],
    [_label.leadingAnchor constraintGreaterThanOrEqualToAnchor:self.leadingAnchor constant:padding],
    [_label.trailingAnchor constraintLessThanOrEqualToAnchor:self.trailingAnchor constant:-padding],
  ]];
}

- (void)show:(const SignLook&)look {
  _look = look;
  _label.textColor = nativeColor(look.textColor);
  [self applyLook];
}

- (void)applyLook {
  CALayer* layer = self.layer;
  layer.cornerRadius = _cornerRadius;
  layer.backgroundColor = nativeColor(_look.fill).CGColor;
  layer.borderColor = nativeColor(_look.rim).CGColor;
  layer.borderWidth = _look.borderWidth;
}

/// The layer's properties draw everything; a bitmap of the view's size would stay empty.
- (BOOL)wantsUpdateLayer {
  return YES;
}

- (void)updateLayer {
  [self applyLook];
}

@end
