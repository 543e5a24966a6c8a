#import "platform/macos/ui/FormViews.h"

@implementation VembrixWrappingLabel

- (void)layout {
  const CGFloat width = NSWidth(self.bounds);
  if (self.preferredMaxLayoutWidth != width) {
    self.preferredMaxLayoutWidth = width;
    [self invalidateIntrinsicContentSize];
  }
  [super layout];
}

@end

@implementation VembrixFlippedDocumentView

- (BOOL)isFlipped {
  return YES;
}

@end

@implementation VembrixColorWell {
  NSColorList* offered_;
}

- (void)activate:(BOOL)exclusive {
  [super activate:exclusive];
  [self withdrawSwatches];
  if (!self.swatches) return;
  offered_ = self.swatches();
  [NSColorPanel.sharedColorPanel attachColorList:offered_];
}

- (void)deactivate {
  [super deactivate];
  [self withdrawSwatches];
}

- (void)withdrawSwatches {
  if (offered_) [NSColorPanel.sharedColorPanel detachColorList:offered_];
  offered_ = nil;
}

@end

@implementation VembrixLinkButton

- (void)resetCursorRects {
  [self addCursorRect:self.bounds cursor:NSCursor.pointingHandCursor];
}

@end
