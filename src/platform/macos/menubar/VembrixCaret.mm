#import "platform/macos/menubar/VembrixCaret.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/macos/menubar/MenuTracking.h"

namespace {

constexpr CGFloat kWidth = 1;
/// The time in seconds for which AppKit's caret is visible, and then invisible, by default.
constexpr double kBlinkInterval = 0.5;

NSColor* caretColor() {
  if (@available(macOS 14.0, *)) return NSColor.textInsertionPointColor;
  return NSColor.controlTextColor;
}

}  // namespace

@implementation VembrixCaret {
  /// Nil while the caret is in no text.
  __weak NSTextView* _editor;
  /// The colour of AppKit's caret in that text.
  NSColor* _color;
  NSTimer* _blinkTimer;
  BOOL _isLit;
}

- (instancetype)init {
  self = [super initWithFrame:NSZeroRect];
  if (!self) return nil;
  self.wantsLayer = YES;
  self.accessibilityElement = NO;
  return self;
}

- (void)dealloc {
  [_blinkTimer invalidate];
}

- (void)showIn:(NSTextView*)editor {
  if (_editor == editor) return;
  [self hide];
  _editor = editor;
  _color = editor.insertionPointColor;
  editor.insertionPointColor = NSColor.clearColor;
  [editor addSubview:self];
  NSNotificationCenter* center = NSNotificationCenter.defaultCenter;
  for (NSNotificationName name in
       @[ NSTextViewDidChangeSelectionNotification, NSTextDidChangeNotification ]) {
    [center addObserver:self selector:@selector(follow) name:name object:editor];
  }
  __weak VembrixCaret* weakSelf = self;
  _blinkTimer = vembrix::startMenuTimer(kBlinkInterval, ^{
    [weakSelf blink];
  });
  [self follow];
}

- (void)hide {
  if (!_blinkTimer) return;
  [_blinkTimer invalidate];
  _blinkTimer = nil;
  [NSNotificationCenter.defaultCenter removeObserver:self];
  [self removeFromSuperview];
  _editor.insertionPointColor = _color;
  _editor = nil;
  _color = nil;
}

/// Moves to the insertion point and stays visible for a whole interval.
- (void)follow {
  NSTextView* editor = _editor;
  NSWindow* window = editor.window;
  if (!window) return;
  // The text view knows the position, however it lays text out.
  const NSRange place = NSMakeRange(editor.selectedRange.location, 0);
  const NSRect onScreen = [editor firstRectForCharacterRange:place actualRange:nullptr];
  const NSRect inEditor = [editor convertRect:[window convertRectFromScreen:onScreen] fromView:nil];
  self.frame = NSMakeRect(NSMinX(inEditor), NSMinY(inEditor), kWidth, NSHeight(inEditor));
  _isLit = YES;
  _blinkTimer.fireDate = [NSDate dateWithTimeIntervalSinceNow:kBlinkInterval];
  [self showState];
}

- (void)blink {
  _isLit = !_isLit;
  [self showState];
}

- (void)showState {
  self.hidden = !_isLit || _editor.selectedRange.length > 0;
}

- (BOOL)wantsUpdateLayer {
  return YES;
}

/// Called while the appearance is the current one, and again when it changes.
- (void)updateLayer {
  self.layer.backgroundColor = caretColor().CGColor;
}

/// Lets clicks through to the text.
- (NSView*)hitTest:(NSPoint)point {
  return nil;
}

@end
