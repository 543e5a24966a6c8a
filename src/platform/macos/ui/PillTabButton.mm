#import "platform/macos/ui/PillTabButton.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/macos/support/Conversions.h"

namespace {

using namespace vembrix;

NSString* const kUnderlineName = @"underline";

NSAttributedString* styledTitle(const TabButton& look) {
  auto* paragraph = [[NSMutableParagraphStyle alloc] init];
  paragraph.lineBreakMode = NSLineBreakByTruncatingTail;
  if (look.alignment == TabButton::Alignment::Leading) {
    paragraph.alignment = NSTextAlignmentLeft;
    paragraph.firstLineHeadIndent = look.indent;
    paragraph.headIndent = look.indent;
  } else {
    paragraph.alignment = NSTextAlignmentCenter;
  }
  return [[NSAttributedString alloc]
      initWithString:nativeString(look.text)
          attributes:@{
            NSFontAttributeName : nativeFont(look.style.font),
            NSForegroundColorAttributeName : nativeColor(look.style.color),
            NSParagraphStyleAttributeName : paragraph,
          }];
}

}  // namespace

@implementation VembrixPillTabButton {
  TabButton _look;
}

- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self) {
    self.bordered = NO;
    self.wantsLayer = YES;
    [self setButtonType:NSButtonTypeMomentaryChange];
    self.accessibilityRole = NSAccessibilityRadioButtonRole;
    self.accessibilitySubrole = NSAccessibilityTabButtonSubrole;
  }
  return self;
}

- (NSSize)intrinsicContentSize {
  return NSMakeSize(super.intrinsicContentSize.width + tab_button_metrics::kExtraWidth,
                    tab_button_metrics::kHeight);
}

- (void)show:(const TabButton&)look {
  _look = look;
  self.attributedTitle = styledTitle(look);
  self.accessibilityLabel = nativeString(look.text);
  self.accessibilityValue = @(look.isSelected);
  [self invalidateIntrinsicContentSize];
  self.layer.cornerRadius = look.cornerRadius;
  [self replaceUnderline];
  [self applyColors];
}

- (CALayer*)underline {
  for (CALayer* layer in self.layer.sublayers) {
    if ([layer.name isEqualToString:kUnderlineName]) return layer;
  }
  return nil;
}

- (void)replaceUnderline {
  while (CALayer* old = [self underline]) [old removeFromSuperlayer];
  if (!_look.underline) return;
  CALayer* line = [CALayer layer];
  line.name = kUnderlineName;
  [self.layer addSublayer:line];
  [self placeUnderline];
}

/// Places the line at the bottom edge. A button counts from its top; whether its layer does, too,
/// depends on the layers that contain it.
- (void)placeUnderline {
  CALayer* line = [self underline];
  if (!line) return;
  using namespace tab_button_metrics;
  const CGFloat height = self.intrinsicContentSize.height;
  const CGFloat y = self.layer.contentsAreFlipped ? height - kUnderlineBottom - kUnderlineHeight
                                                  : kUnderlineBottom;
  const CGFloat width = self.intrinsicContentSize.width - 2 * kUnderlineInset;
  [CATransaction begin];
  CATransaction.disableActions = YES;
  line.frame = NSMakeRect(kUnderlineInset, y, width, kUnderlineHeight);
  [CATransaction commit];
}

/// Resolves system colours for the button's present appearance, because a layer's colours are fixed
/// when they are set.
- (void)applyColors {
  CALayer* layer = self.layer;
  NSColor* background = _look.background ? nativeColor(*_look.background) : nil;
  NSColor* line = _look.underline ? nativeColor(*_look.underline) : nil;
  // The line's layer belongs to no view, so a change of its colour would be animated.
  [CATransaction begin];
  CATransaction.disableActions = YES;
  [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
    layer.backgroundColor = background.CGColor;
    [self underline].backgroundColor = line.CGColor;
  }];
  [CATransaction commit];
}

- (void)layout {
  [super layout];
  [self placeUnderline];
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  [self placeUnderline];
  [self applyColors];
}

- (void)viewDidChangeEffectiveAppearance {
  [super viewDidChangeEffectiveAppearance];
  [self applyColors];
}

@end
