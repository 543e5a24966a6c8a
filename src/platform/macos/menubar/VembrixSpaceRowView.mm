#import "platform/macos/menubar/VembrixSpaceRowView.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>

#import "platform/macos/menubar/MenuTracking.h"
#import "platform/macos/menubar/SpaceRowParts.h"
#import "platform/macos/menubar/VembrixNameEditor.h"
#import "platform/macos/support/Conversions.h"

using namespace vembrix;

@implementation VembrixSpaceRowView {
  SpaceRowParts _parts;
  VembrixNameEditor* _nameEditor;
  NSTrackingArea* _trackingArea;
  NSTimer* _hoverTimer;
  /// Null after invalidate.
  SpaceRowHandler* _handler;
  SpaceRowState _state;
  BOOL _isHighlighted;
  /// Whether the item's action is ignored: the row has closed the menu itself, or the menu closed
  /// while the row was edited.
  BOOL _ignoresActivation;
}

- (instancetype)initWithContent:(const SpaceRowContent&)content
                          state:(const SpaceRowState&)state
                        handler:(SpaceRowHandler*)handler {
  self =
      [super initWithFrame:NSMakeRect(0, 0, row_metrics::kSize.width, row_metrics::kSize.height)];
  if (!self) return nil;
  _handler = handler;
  // As wide as the menu if that is wider. Left to right, as the handler expects.
  self.autoresizingMask = NSViewWidthSizable;
  self.userInterfaceLayoutDirection = NSUserInterfaceLayoutDirectionLeftToRight;
  self.wantsLayer = YES;
  self.layer.cornerRadius = row_metrics::kCornerRadius;
  // The new parts show a default state with this label. show: skips values that equal _state.
  _state.label = state.label;
  _parts = addSpaceRowParts(self, content, state.label);
  _nameEditor = [[VembrixNameEditor alloc] initWithField:_parts.editField row:self handler:handler];
  _parts.renameButton.target = self;
  _parts.renameButton.action = @selector(renameClicked);
  [self describeWithContent:content];
  [self show:state];
  return self;
}

- (void)dealloc {
  [self stopHoverTracking];
}

- (void)invalidate {
  _handler = nullptr;
  [self stopHoverTracking];
  [_nameEditor invalidate];
  _parts.label.hidden = NO;
  _parts.renameButton.target = nil;
}

#pragma mark What is shown

- (void)show:(const SpaceRowState&)state {
  if (_state == state) return;
  const SpaceRowState old = std::exchange(_state, state);
  if (old.isEditing && !state.isEditing) [_nameEditor end];
  if (old.label != state.label) {
    _parts.label.stringValue = nativeString(state.label);
    self.accessibilityLabel = _parts.label.stringValue;
  }
  _parts.label.hidden = state.isEditing;
  _parts.renameButton.hidden = !state.showsRenameButton;
  if (old.background != state.background) [self showBackground];
  if (!old.isEditing && state.isEditing) {
    [self cancelEditingOfOthers];
    [_nameEditor beginWithText:nativeString(state.label)];
  }
}

- (void)showBackground {
  CALayer* layer = self.layer;
  if (!_state.background) {
    layer.backgroundColor = nil;
    return;
  }
  NSColor* color = nativeColor(*_state.background);
  // A layer's colour is fixed, so a system colour is resolved for the menu, which may be dark in a
  // light system.
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
  if (self.window && self.window != newWindow) [_nameEditor rowWillLeaveWindow];
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  if (self.window) {
    _ignoresActivation = NO;
    if (_handler) _handler->setShown(true);
    if (_state.isEditing) {
      [self cancelEditingOfOthers];
      [_nameEditor rowDidEnterWindow];
    }
    [self startHoverTracking];
  } else {
    [self stopHoverTracking];
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

/// Observes the pointer by a timer, too: tracking areas report neither a pointer that is over the
/// row when the menu opens nor every movement while the menu tracks the mouse itself.
- (void)startHoverTracking {
  [self stopHoverTracking];
  if (!_handler) return;
  __weak VembrixSpaceRowView* weakSelf = self;
  _hoverTimer = startMenuTimer(row_metrics::kHoverInterval, ^{
    [weakSelf hoverTick];
  });
  [self hoverTick];
}

- (void)stopHoverTracking {
  [_hoverTimer invalidate];
  _hoverTimer = nil;
}

- (void)hoverTick {
  if (_state.isEditing) {
    [_nameEditor look];
    return;
  }
  NSWindow* window = self.window;
  if (!window || !_handler) return;
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
  // The view handles clicks by itself. The item's action would count them twice.
  if (_handler && !_ignoresActivation) _handler->activate();
}

#pragma mark Editing

- (BOOL)isEditing {
  return _state.isEditing;
}

- (NSString*)editedText {
  return _nameEditor.text;
}

- (void)renameClicked {
  if (_handler) _handler->renameClicked();
}

/// Cancels the editing of other rows. A window has one first responder, so a row that lost it would
/// wait for Return without a caret.
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

/// Performs the commands of an Edit menu, as the program has none.
- (BOOL)performKeyEquivalent:(NSEvent*)event {
  return [_nameEditor performEditCommand:event] || [super performKeyEquivalent:event];
}

#pragma mark Accessibility

- (void)describeWithContent:(const SpaceRowContent&)content {
  self.accessibilityElement = YES;
  self.accessibilityRole = NSAccessibilityButtonRole;
  self.accessibilityLabel = _parts.label.stringValue;
  if (!content.dotDescription.empty()) {
    self.accessibilityValue = nativeString(content.dotDescription);
  }
  // The button is visible only under the pointer, so assistive programs get an action.
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
