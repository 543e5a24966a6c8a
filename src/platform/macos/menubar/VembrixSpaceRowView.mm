#import "platform/macos/menubar/VembrixSpaceRowView.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>

#import "platform/macos/Conversions.h"
#import "platform/macos/menubar/EditingKeys.h"
#import "platform/macos/menubar/SpaceRowParts.h"

using namespace vembrix;

@implementation VembrixSpaceRowView {
  SpaceRowParts _parts;
  NSTrackingArea* _trackingArea;
  id _eventMonitor;
  NSTimer* _hoverTimer;
  /// Null when nobody is to be told any more.
  SpaceRowHandler* _handler;
  SpaceRowState _state;
  BOOL _isHighlighted;
  /// What the menu's opening was for has happened, or the menu closed on a row that
  /// was being edited: the item's action then counts no more.
  BOOL _ignoresActivation;
}

- (instancetype)initWithContent:(const SpaceRowContent&)content
                          state:(const SpaceRowState&)state
                        handler:(SpaceRowHandler*)handler {
  self =
      [super initWithFrame:NSMakeRect(0, 0, row_metrics::kSize.width, row_metrics::kSize.height)];
  if (!self) return nil;
  _handler = handler;
  // As wide as the menu, where that is wider. Left to right as its handler counts.
  self.autoresizingMask = NSViewWidthSizable;
  self.userInterfaceLayoutDirection = NSUserInterfaceLayoutDirectionLeftToRight;
  self.wantsLayer = YES;
  self.layer.cornerRadius = row_metrics::kCornerRadius;
  // All that show: leaves out what equals a fresh state.
  _state.label = state.label;
  _parts = addSpaceRowParts(self, content, state.label);
  _parts.editField.delegate = self;
  _parts.renameButton.target = self;
  _parts.renameButton.action = @selector(renameClicked);
  [self describeWithContent:content];
  [self show:state];
  return self;
}

- (void)dealloc {
  [self stop];
}

- (void)invalidate {
  _handler = nullptr;
  [self stop];
  [self endEditing];
  _parts.editField.delegate = nil;
  _parts.renameButton.target = nil;
}

/// What would call the row from outside its window.
- (void)stop {
  [self stopHoverTracking];
  [self removeMonitor];
}

#pragma mark What is shown

- (void)show:(const SpaceRowState&)state {
  if (_state == state) return;
  const SpaceRowState old = std::exchange(_state, state);
  if (old.isEditing && !state.isEditing) [self endEditing];
  if (old.label != state.label) {
    _parts.label.stringValue = nativeString(state.label);
    self.accessibilityLabel = _parts.label.stringValue;
  }
  _parts.label.hidden = state.isEditing;
  _parts.renameButton.hidden = !state.showsRenameButton;
  if (old.background != state.background) [self showBackground];
  if (!old.isEditing && state.isEditing) {
    _parts.editField.stringValue = nativeString(state.label);
    _parts.editField.hidden = NO;
    [self takeKeyboard];
  }
}

- (void)showBackground {
  CALayer* layer = self.layer;
  if (!_state.background) {
    layer.backgroundColor = nil;
    return;
  }
  NSColor* color = nativeColor(*_state.background);
  // A layer's colour is fixed, so one of the system's is resolved for the menu,
  // which may be dark in a light system.
  [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
    layer.backgroundColor = color.CGColor;
  }];
}

- (void)viewDidChangeEffectiveAppearance {
  [super viewDidChangeEffectiveAppearance];
  [self showBackground];
}

#pragma mark The window

- (void)viewWillMoveToWindow:(NSWindow*)newWindow {
  [super viewWillMoveToWindow:newWindow];
  // The field editor belongs to the window that the row leaves.
  if (self.window && self.window != newWindow) [self dropFieldEditor];
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  if (self.window) {
    _ignoresActivation = NO;
    if (_handler) _handler->setShown(true);
    if (_state.isEditing) [self takeKeyboard];
    [self startHoverTracking];
  } else {
    [self stop];
    if (_state.isEditing) _ignoresActivation = YES;
    if (_handler) _handler->setShown(false);
  }
}

#pragma mark Pointer

- (void)updateTrackingAreas {
  [super updateTrackingAreas];
  if (_trackingArea) [self removeTrackingArea:_trackingArea];
  _trackingArea =
      [[NSTrackingArea alloc] initWithRect:self.bounds
                                   options:NSTrackingMouseEnteredAndExited |
                                           NSTrackingActiveAlways | NSTrackingInVisibleRect
                                     owner:self
                                  userInfo:nil];
  [self addTrackingArea:_trackingArea];
}

- (void)mouseEntered:(NSEvent*)event {
  if (_handler) _handler->setHovered(true);
}

- (void)mouseExited:(NSEvent*)event {
  if (_handler) _handler->setHovered(false);
}

/// Tracking areas alone do not tell of a pointer that is over the row when the
/// menu opens, nor of all that happens while the menu tracks the mouse itself.
- (void)startHoverTracking {
  [self stopHoverTracking];
  if (!_handler) return;
  __weak VembrixSpaceRowView* weakSelf = self;
  _hoverTimer = [NSTimer timerWithTimeInterval:row_metrics::kHoverInterval
                                       repeats:YES
                                         block:^(NSTimer*) {
                                           // The event that opened the menu, and its
                                           // pool, last as long as the menu is open.
                                           @autoreleasepool {
                                             [weakSelf hoverTick];
                                           }
                                         }];
  // An open menu runs the loop in the first mode; the common ones, of which it is
  // usually one, hold also while it opens and closes.
  [NSRunLoop.currentRunLoop addTimer:_hoverTimer forMode:NSEventTrackingRunLoopMode];
  [NSRunLoop.currentRunLoop addTimer:_hoverTimer forMode:NSRunLoopCommonModes];
  [self hoverTick];
}

- (void)stopHoverTracking {
  [_hoverTimer invalidate];
  _hoverTimer = nil;
}

- (void)hoverTick {
  NSWindow* window = self.window;
  if (_state.isEditing || !window || !_handler) return;
  [self setHighlighted:self.enclosingMenuItem.highlighted];
  const NSPoint inWindow = [window convertPointFromScreen:NSEvent.mouseLocation];
  const NSPoint point = [self convertPoint:inWindow fromView:nil];
  _handler->setHovered(NSPointInRect(point, self.bounds));
}

- (void)setHighlighted:(BOOL)isHighlighted {
  if (_isHighlighted == isHighlighted) return;
  _isHighlighted = isHighlighted;
  if (_handler) _handler->setHighlighted(isHighlighted);
}

- (NSView*)hitTest:(NSPoint)point {
  if (self.hidden || !_handler) return nil;
  const NSPoint local = [self convertPoint:point fromView:self.superview];
  switch (_handler->hitTest(pointFrom(local), sizeFrom(self.bounds.size))) {
    case RowPart::None:
      return nil;
    case RowPart::Row:
      return self;
    case RowPart::EditField:
      return _parts.editField;
    case RowPart::RenameButton:
      return _parts.renameButton;
  }
}

- (void)mouseUp:(NSEvent*)event {
  if (!_handler) return;
  const NSPoint point = [self convertPoint:event.locationInWindow fromView:nil];
  _handler->mouseUp(pointFrom(point), sizeFrom(self.bounds.size));
}

- (void)closeMenu {
  _ignoresActivation = YES;
  [self.enclosingMenuItem.menu cancelTracking];
}

- (void)activate:(id)sender {
  // A click is the view's own. Were its item performed as well, it would count
  // twice.
  if (_handler && !_ignoresActivation) _handler->activate();
}

#pragma mark Editing

- (BOOL)isEditing {
  return _state.isEditing;
}

- (NSString*)editedText {
  return _parts.editField.stringValue;
}

- (void)renameClicked {
  if (_handler) _handler->renameClicked();
}

/// Nil while the field is not the window's first responder.
- (NSTextView*)fieldEditor {
  NSText* editor = _parts.editField.currentEditor;
  return [editor isKindOfClass:[NSTextView class]] ? static_cast<NSTextView*>(editor) : nil;
}

- (void)takeKeyboard {
  NSWindow* window = self.window;
  if (!window) return;
  [self cancelEditingOfOthers];
  // The caret and input methods go with the key window. A menu's may be it or may
  // not, which is the system's to say.
  if (!window.keyWindow && window.canBecomeKeyWindow) [window makeKeyWindow];
  [window makeFirstResponder:_parts.editField];
  [_parts.editField.currentEditor selectAll:nil];
  [self installMonitor];
}

/// A window has one first responder: a row that lost it would go on waiting for
/// Return, out of sight of the caret.
- (void)cancelEditingOfOthers {
  for (NSMenuItem* item in self.enclosingMenuItem.menu.itemArray) {
    NSView* view = item.view;
    if (view == self || ![view isKindOfClass:[VembrixSpaceRowView class]]) continue;
    auto* other = static_cast<VembrixSpaceRowView*>(view);
    if (other.isEditing) [other cancelEditing];
  }
}

- (void)cancelEditing {
  if (_handler) _handler->cancel();
}

- (void)endEditing {
  [self removeMonitor];
  [self dropFieldEditor];
  _parts.editField.hidden = YES;
  _parts.label.hidden = NO;
}

/// Gives the field editor back to the window and the keyboard to the menu. Does
/// nothing when the field does not have them.
- (void)dropFieldEditor {
  NSTextView* editor = [self fieldEditor];
  if (!editor) return;
  if (editor.hasMarkedText) [editor.inputContext discardMarkedText];
  [_parts.editField abortEditing];
  [self.window makeFirstResponder:nil];
}

- (void)installMonitor {
  [self removeMonitor];
  __weak VembrixSpaceRowView* weakSelf = self;
  _eventMonitor = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                        handler:^NSEvent*(NSEvent* event) {
                                                          VembrixSpaceRowView* row = weakSelf;
                                                          if (!row) return event;
                                                          return [row eventAfterKeyDown:event];
                                                        }];
}

- (void)removeMonitor {
  if (!_eventMonitor) return;
  [NSEvent removeMonitor:_eventMonitor];
  _eventMonitor = nil;
}

/// Nil when the event is done with.
- (NSEvent*)eventAfterKeyDown:(NSEvent*)event {
  if (!_handler || !_state.isEditing) return event;
  NSTextView* editor = [self fieldEditor];
  switch (_handler->keyDown(rowKey(event, editor))) {
    case KeyHandling::Passed:
      return event;
    case KeyHandling::Swallowed:
      return nil;
    case KeyHandling::Interpreted:
      if (!editor) return event;
      if (!performEditCommand(event, editor)) [editor interpretKeyEvents:@[ event ]];
      return nil;
  }
}

/// The field's own path, for systems on which an open menu hands key presses to
/// its window and no monitor sees them. The program has no Edit menu.
- (BOOL)performKeyEquivalent:(NSEvent*)event {
  NSTextView* editor = _state.isEditing ? [self fieldEditor] : nil;
  if (editor && performEditCommand(event, editor)) return YES;
  return [super performKeyEquivalent:event];
}

- (BOOL)control:(NSControl*)control
               textView:(NSTextView*)textView
    doCommandBySelector:(SEL)commandSelector {
  if (!_handler) return NO;
  if (commandSelector == @selector(insertNewline:)) {
    _handler->commit();
    return YES;
  }
  if (commandSelector == @selector(cancelOperation:)) {
    _handler->cancel();
    return YES;
  }
  return NO;
}

#pragma mark Accessibility

- (void)describeWithContent:(const SpaceRowContent&)content {
  self.accessibilityElement = YES;
  self.accessibilityRole = NSAccessibilityButtonRole;
  self.accessibilityLabel = _parts.label.stringValue;
  if (!content.dotDescription.empty()) {
    self.accessibilityValue = nativeString(content.dotDescription);
  }
  // The button is there only under the pointer.
  self.accessibilityCustomActions =
      @[ [[NSAccessibilityCustomAction alloc] initWithName:nativeString(content.renameTitle)
                                                    target:self
                                                  selector:@selector(performRename)] ];
}

- (NSArray*)accessibilityChildren {
  auto* children = [NSMutableArray array];
  if (!_parts.editField.hidden) [children addObject:_parts.editField];
  if (!_parts.renameButton.hidden) [children addObject:_parts.renameButton];
  return children;
}

- (BOOL)accessibilityPerformPress {
  if (!_handler) return NO;
  [self activate:self];
  return YES;
}

- (BOOL)performRename {
  if (!_handler) return NO;
  [self renameClicked];
  return YES;
}

@end
