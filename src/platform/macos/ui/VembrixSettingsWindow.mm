#import "platform/macos/ui/VembrixSettingsWindow.h"

namespace {

// The code of the key, which is the same in every keyboard layout.
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
    // There is only one such window, and none of its state is saved.
    self.tabbingMode = NSWindowTabbingModeDisallowed;
    self.restorable = NO;
    self.autorecalculatesKeyViewLoop = YES;
    // When it is shown again, it appears in the active Space, even over a full-screen window,
    // instead of taking the user back to the Space where it was left.
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

/// Handles Escape in controls that bind keys to commands, and Command-Period.
- (void)cancelOperation:(id)sender {
  [self performClose:sender];
}

/// Handles Escape in all other controls.
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
