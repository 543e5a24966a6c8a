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

@implementation VembrixLinkButton

- (void)resetCursorRects {
  [self addCursorRect:self.bounds cursor:NSCursor.pointingHandCursor];
}

@end
