#import "platform/macos/menubar/VembrixNamePanel.h"

@implementation VembrixNamePanel

- (instancetype)initWithField:(NSTextField*)field row:(NSRect)row level:(NSWindowLevel)level {
  // The program does not become the active one by it, which would close the menu.
  self =
      [super initWithContentRect:row
                       styleMask:NSWindowStyleMaskBorderless | NSWindowStyleMaskNonactivatingPanel
                         backing:NSBackingStoreBuffered
                           defer:NO];
  if (!self) return nil;
  _field = field;
  [self.contentView addSubview:field];
  self.level = level;
  self.releasedWhenClosed = NO;
  // An accessory is hardly ever active.
  self.hidesOnDeactivate = NO;
  self.becomesKeyOnlyIfNeeded = NO;
  self.opaque = NO;
  self.backgroundColor = NSColor.clearColor;
  self.hasShadow = NO;
  self.ignoresMouseEvents = YES;
  self.animationBehavior = NSWindowAnimationBehaviorNone;
  self.collectionBehavior =
      NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorTransient |
      NSWindowCollectionBehaviorIgnoresCycle | NSWindowCollectionBehaviorFullScreenAuxiliary;
  self.restorable = NO;
  self.excludedFromWindowsMenu = YES;
  return self;
}

- (BOOL)canBecomeKeyWindow {
  return YES;
}

- (BOOL)canBecomeMainWindow {
  return NO;
}

/// Where the row is, be that over the edge of the screen.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)screen {
  return frame;
}

- (void)open {
  [self orderFrontRegardless];
  [self makeKeyWindow];
  [self makeFirstResponder:self.field];
}

- (void)dismiss {
  [self orderOut:nil];
  // Not yet: it may be a key press in the panel that ends it.
  [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                  block:^{
                                    [self close];
                                  }];
}

@end
