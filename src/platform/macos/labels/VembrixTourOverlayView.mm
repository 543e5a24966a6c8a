#import "platform/macos/labels/VembrixTourOverlayView.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/macos/support/CoderUnsupported.h"
#import "platform/macos/support/Conversions.h"

using namespace vembrix;

namespace {

NSProgressIndicator* makeSpinner(CGFloat size) {
  auto* spinner = [[NSProgressIndicator alloc] initWithFrame:NSMakeRect(0, 0, size, size)];
  spinner.style = NSProgressIndicatorStyleSpinning;
  spinner.indeterminate = YES;
  spinner.controlSize = NSControlSizeRegular;
  spinner.translatesAutoresizingMaskIntoConstraints = NO;
  // The panel is dark in every appearance of the system.
  spinner.appearance = nativeAppearance(Appearance::Dark);
  [NSLayoutConstraint activateConstraints:@[
    [spinner.widthAnchor constraintEqualToConstant:size],
    [spinner.heightAnchor constraintEqualToConstant:size],
  ]];
  [spinner startAnimation:nil];
  return spinner;
}

NSTextField* makeText(const TourOverlayContent& content) {
  NSTextField* text = [NSTextField labelWithString:nativeString(content.text)];
  text.font = nativeFont(content.font);
  text.textColor = nativeColor(content.textColor);
  text.lineBreakMode = NSLineBreakByTruncatingTail;
  // Weaker than the constraints that hold the window's size.
  [text setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                 forOrientation:NSLayoutConstraintOrientationHorizontal];
  return text;
}

}  // namespace

@implementation VembrixTourOverlayView {
  Srgb _fill;
  CGFloat _cornerRadius;
}

- (instancetype)initWithContent:(const TourOverlayContent&)content {
  self = [super initWithFrame:NSMakeRect(0, 0, content.frame.width, content.frame.height)];
  if (!self) return nil;
  _fill = content.fill;
  _cornerRadius = content.cornerRadius;
  self.wantsLayer = YES;
  self.layerContentsRedrawPolicy = NSViewLayerContentsRedrawOnSetNeedsDisplay;
  [self applyLook];
  [self addStack:content];
  return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  coderIsUnsupported();
}

- (void)addStack:(const TourOverlayContent&)content {
  NSStackView* stack =
      [NSStackView stackViewWithViews:@[ makeSpinner(content.spinnerSize), makeText(content) ]];
  stack.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  stack.alignment = NSLayoutAttributeCenterY;
  stack.spacing = content.spacing;
  [self addSubview:stack];
  [NSLayoutConstraint activateConstraints:@[
    [stack.centerXAnchor constraintEqualToAnchor:self.centerXAnchor],
    [stack.centerYAnchor constraintEqualToAnchor:self.centerYAnchor],
    [stack.leadingAnchor constraintGreaterThanOrEqualToAnchor:self.leadingAnchor
                                                     constant:content.padding],
    [stack.trailingAnchor constraintLessThanOrEqualToAnchor:self.trailingAnchor
                                                   constant:-content.padding],
  ]];
}

- (void)applyLook {
  self.layer.cornerRadius = _cornerRadius;
  self.layer.backgroundColor = nativeColor(_fill).CGColor;
}

- (BOOL)wantsUpdateLayer {
  return YES;
}

- (void)updateLayer {
  [self applyLook];
}

@end
