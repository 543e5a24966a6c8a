#import "platform/SpaceRowView.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>

#import "platform/macos/Conversions.h"
#import "platform/macos/menubar/EditingKeys.h"
#import "platform/macos/menubar/NativeSpaceRowView.h"

using namespace vembrix;

/// Shows what it is told, and tells the handler what the user does.
@interface VembrixSpaceRowView : NSView <NSTextFieldDelegate>

/// The handler stays the caller's, who invalidates the row before the handler
/// goes.
- (instancetype)initWithContent:(const SpaceRowContent&)content
                          state:(const SpaceRowState&)state
                        handler:(SpaceRowHandler*)handler NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
- (instancetype)init NS_UNAVAILABLE;

- (void)show:(const SpaceRowState&)state;
- (void)setHighlighted:(BOOL)isHighlighted;
/// The action of the row's menu item.
- (void)activate:(id)sender;
- (void)closeMenu;
/// Nobody is told anything any more, and nothing runs on.
- (void)invalidate;

@property(nonatomic, readonly) NSString* editedText;
@property(nonatomic, readonly) BOOL isEditing;

@end

namespace {

NSImage* makeImage(const DotImage& given) {
  // The block's own copy: it draws whenever the menu asks for another scale.
  const DotImage drawing = given;
  NSImage* image = [NSImage imageWithSize:nativeSize(drawing.size)
                                  flipped:NO
                           drawingHandler:^BOOL(NSRect) {
                             for (const DotImage::Oval& oval : drawing.ovals) {
                               NSBezierPath* path =
                                   [NSBezierPath bezierPathWithOvalInRect:nativeRect(oval.rect)];
                               if (oval.fill) {
                                 [nativeColor(*oval.fill) setFill];
                                 [path fill];
                               }
                               if (oval.stroke) {
                                 [nativeColor(*oval.stroke) setStroke];
                                 path.lineWidth = oval.lineWidth;
                                 [path stroke];
                               }
                             }
                             return YES;
                           }];
  // Colours of the system are resolved anew whenever the dot is drawn.
  image.cacheMode = NSImageCacheNever;
  return image;
}

NSImageView* makeDotView(const DotImage& dot) {
  NSImageView* view = [NSImageView imageViewWithImage:makeImage(dot)];
  view.imageScaling = NSImageScaleNone;
  view.accessibilityElement = NO;
  return view;
}

NSTextField* makeLabel(const SpaceRowContent& content, const SpaceRowState& state) {
  NSTextField* label = [NSTextField labelWithString:nativeString(state.label)];
  label.font = nativeFont(content.font);
  label.textColor = NSColor.labelColor;
  label.usesSingleLineMode = YES;
  label.lineBreakMode = NSLineBreakByTruncatingTail;
  label.accessibilityElement = NO;
  return label;
}

NSTextField* makeEditField(const SpaceRowContent& content, const SpaceRowState& state) {
  auto* field = [[NSTextField alloc] initWithFrame:NSZeroRect];
  field.stringValue = nativeString(state.label);
  field.font = nativeFont(content.font);
  field.editable = YES;
  field.bordered = YES;
  field.bezelStyle = NSTextFieldSquareBezel;
  field.drawsBackground = YES;
  field.focusRingType = NSFocusRingTypeDefault;
  // A name longer than the field scrolls in it, on one line.
  field.usesSingleLineMode = YES;
  field.cell.scrollable = YES;
  field.hidden = YES;
  field.accessibilityLabel = nativeString(content.renameTitle);
  return field;
}

NSButton* makeRenameButton(const SpaceRowContent& content) {
  NSString* title = nativeString(content.renameTitle);
  auto* button = [[NSButton alloc] initWithFrame:NSZeroRect];
  NSImage* symbol = [NSImage imageWithSystemSymbolName:@"pencil.circle.fill"
                              accessibilityDescription:title];
  button.image = [symbol
      imageWithSymbolConfiguration:[NSImageSymbolConfiguration
                                       configurationWithPointSize:row_metrics::kRenameSymbolSize
                                                           weight:NSFontWeightRegular]];
  button.contentTintColor = NSColor.secondaryLabelColor;
  button.bordered = NO;
  button.bezelStyle = NSBezelStyleRegularSquare;
  button.imagePosition = NSImageOnly;
  button.toolTip = title;
  button.accessibilityLabel = title;
  button.hidden = YES;
  return button;
}

}  // namespace

@implementation VembrixSpaceRowView {
  NSImageView* _dotView;
  NSTextField* _label;
  NSTextField* _editField;
  NSButton* _renameButton;
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
  [self addPartsWithContent:content state:state];
  [self activateConstraints];
  [self describeWithContent:content];
  [self show:state];
  return self;
}

- (void)dealloc {
  [self stop];
}

- (void)addPartsWithContent:(const SpaceRowContent&)content state:(const SpaceRowState&)state {
  _dotView = makeDotView(content.dot);
  _label = makeLabel(content, state);
  _editField = makeEditField(content, state);
  _editField.delegate = self;
  _renameButton = makeRenameButton(content);
  _renameButton.target = self;
  _renameButton.action = @selector(renameClicked);
  for (NSView* part in @[ _dotView, _label, _editField, _renameButton ]) {
    part.translatesAutoresizingMaskIntoConstraints = NO;
    [self addSubview:part];
  }
}

- (void)activateConstraints {
  NSLayoutXAxisAnchor* textEdge = _dotView.trailingAnchor;
  [NSLayoutConstraint activateConstraints:@[
    [_dotView.leadingAnchor constraintEqualToAnchor:self.leadingAnchor
                                           constant:row_metrics::kDotInset],
    [_dotView.centerYAnchor constraintEqualToAnchor:self.centerYAnchor],
    [_dotView.widthAnchor constraintEqualToConstant:row_metrics::kDotSize],
    [_dotView.heightAnchor constraintEqualToConstant:row_metrics::kDotSize],

    [_label.leadingAnchor constraintEqualToAnchor:textEdge constant:row_metrics::kTextGap],
    [_label.centerYAnchor constraintEqualToAnchor:self.centerYAnchor],
    [_label.trailingAnchor constraintLessThanOrEqualToAnchor:_renameButton.leadingAnchor
                                                    constant:-row_metrics::kLabelGap],

    [_editField.leadingAnchor constraintEqualToAnchor:textEdge constant:row_metrics::kTextGap],
    [_editField.centerYAnchor constraintEqualToAnchor:self.centerYAnchor],
    [_editField.trailingAnchor constraintEqualToAnchor:self.trailingAnchor
                                              constant:-row_metrics::kTrailingInset],
    [_editField.heightAnchor constraintEqualToConstant:row_metrics::kEditFieldHeight],

    [_renameButton.trailingAnchor constraintEqualToAnchor:self.trailingAnchor
                                                 constant:-row_metrics::kTrailingInset],
    [_renameButton.centerYAnchor constraintEqualToAnchor:self.centerYAnchor],
    [_renameButton.widthAnchor constraintEqualToConstant:row_metrics::kRenameButtonSize],
    [_renameButton.heightAnchor constraintEqualToConstant:row_metrics::kRenameButtonSize],

    [self.heightAnchor constraintEqualToConstant:row_metrics::kSize.height],
  ]];
}

- (void)invalidate {
  _handler = nullptr;
  [self stop];
  [self endEditing];
  _editField.delegate = nil;
  _renameButton.target = nil;
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
    _label.stringValue = nativeString(state.label);
    self.accessibilityLabel = _label.stringValue;
  }
  _label.hidden = state.isEditing;
  _renameButton.hidden = !state.showsRenameButton;
  if (old.background != state.background) [self showBackground];
  if (!old.isEditing && state.isEditing) {
    _editField.stringValue = nativeString(state.label);
    _editField.hidden = NO;
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
                                           [weakSelf hoverTick];
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
      return _editField;
    case RowPart::RenameButton:
      return _renameButton;
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
  return _editField.stringValue;
}

- (void)renameClicked {
  if (_handler) _handler->renameClicked();
}

/// Nil while the field is not the window's first responder.
- (NSTextView*)fieldEditor {
  NSText* editor = _editField.currentEditor;
  return [editor isKindOfClass:[NSTextView class]] ? static_cast<NSTextView*>(editor) : nil;
}

- (void)takeKeyboard {
  NSWindow* window = self.window;
  if (!window) return;
  [self cancelEditingOfOthers];
  // The caret and input methods go with the key window. A menu's may be it or may
  // not, which is the system's to say.
  if (!window.keyWindow && window.canBecomeKeyWindow) [window makeKeyWindow];
  [window makeFirstResponder:_editField];
  [_editField.currentEditor selectAll:nil];
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
  _editField.hidden = YES;
  _label.hidden = NO;
}

/// Gives the field editor back to the window and the keyboard to the menu. Does
/// nothing when the field does not have them.
- (void)dropFieldEditor {
  NSTextView* editor = [self fieldEditor];
  if (!editor) return;
  if (editor.hasMarkedText) [editor.inputContext discardMarkedText];
  [_editField abortEditing];
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
  self.accessibilityLabel = _label.stringValue;
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
  if (!_editField.hidden) [children addObject:_editField];
  if (!_renameButton.hidden) [children addObject:_renameButton];
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

namespace vembrix {
namespace {

/// Owns the item, its view and the handler; the view leads to the handler, and is
/// invalidated first. A menu that is being rebuilt, or the pool of the event that
/// rebuilds it, may keep the view a little longer.
class SystemSpaceRowView : public NativeSpaceRowView {
 public:
  SystemSpaceRowView(const SpaceRowContent& content, const SpaceRowState& state,
                     std::unique_ptr<SpaceRowHandler> handler)
      : handler_(std::move(handler)),
        view_([[VembrixSpaceRowView alloc] initWithContent:content
                                                     state:state
                                                   handler:handler_.get()]),
        item_([[NSMenuItem alloc] initWithTitle:nativeString(state.label)
                                         action:@selector(activate:)
                                  keyEquivalent:@""]) {
    // The title is not drawn: by it the row is found by typing, and read out.
    item_.target = view_;
    item_.view = view_;
    if (!content.dotDescription.empty()) {
      item_.accessibilityValue = nativeString(content.dotDescription);
    }
    handler_->attach(*this);
  }

  ~SystemSpaceRowView() override { [view_ invalidate]; }

  SystemSpaceRowView(const SystemSpaceRowView&) = delete;
  SystemSpaceRowView& operator=(const SystemSpaceRowView&) = delete;

  NSMenuItem* nativeItem() const override { return item_; }

  void setHighlighted(bool isHighlighted) override { [view_ setHighlighted:isHighlighted]; }

  void setState(const SpaceRowState& state) override { [view_ show:state]; }

  std::string editedText() const override { return utf8String(view_.editedText); }

  void closeMenu() override { [view_ closeMenu]; }

 private:
  const std::unique_ptr<SpaceRowHandler> handler_;
  VembrixSpaceRowView* const view_;
  NSMenuItem* const item_;
};

}  // namespace

std::unique_ptr<SpaceRowView> SpaceRowView::create(SpaceRowContent content, SpaceRowState state,
                                                   std::unique_ptr<SpaceRowHandler> handler) {
  return std::make_unique<SystemSpaceRowView>(content, state, std::move(handler));
}

}  // namespace vembrix
