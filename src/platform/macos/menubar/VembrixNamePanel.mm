#import "platform/macos/menubar/VembrixNamePanel.h"

@implementation VembrixNamePanel

- (instancetype)initWithField:(NSTextField*)field row:(NSRect)row level:(NSWindowLevel)level {
  // A panel that does not activate the program, which would close the menu.
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

/// Returns the frame unchanged: the panel covers the row, even beyond the edge of the screen.
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
  // Deferred, because a key press in the panel may cause this call.
  [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                  block:^{
                                    [self close];
                                  }];
}

@end
