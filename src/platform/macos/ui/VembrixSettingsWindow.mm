#import "platform/macos/ui/VembrixSettingsWindow.h"

namespace {

// Of the key, not of a character: the same in every keyboard layout.
constexpr unsigned short kEscapeKey = 53;

}  // namespace

@implementation VembrixSettingsWindow

- (instancetype)initWithContentSize:(NSSize)size title:(NSString*)title {
  self = [super initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                          styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable
                            backing:NSBackingStoreBuffered
                              defer:NO];
  if (self) {
    self.title = title;
    self.releasedWhenClosed = NO;
    // There is one, and nothing of it is saved.
    self.tabbingMode = NSWindowTabbingModeDisallowed;
    self.restorable = NO;
    self.autorecalculatesKeyViewLoop = YES;
    // Shown again, it appears in the active Space, also over a full-screen window, and does not
    // take the user back to the Space in which it was left.
    self.collectionBehavior =
        NSWindowCollectionBehaviorMoveToActiveSpace | NSWindowCollectionBehaviorFullScreenAuxiliary;
    [self center];
  }
  return self;
}

- (void)close {
  [super close];
  if (void (^handler)(void) = self.closeHandler) handler();
}

/// Escape, from a control that binds keys to commands, and Command-Period.
- (void)cancelOperation:(id)sender {
  [self performClose:sender];
}

/// Escape, from every other control.
- (void)keyDown:(NSEvent*)event {
  if (event.keyCode == kEscapeKey) {
    [self cancelOperation:nil];
  } else {
    [super keyDown:event];
  }
}

- (BOOL)makeFirstResponder:(NSResponder*)responder {
  const BOOL isDone = [super makeFirstResponder:responder];
  if (isDone && [responder isKindOfClass:[NSControl class]]) {
    auto* control = static_cast<NSControl*>(responder);
    [control scrollRectToVisible:control.bounds];
  }
  return isDone;
}

@end
