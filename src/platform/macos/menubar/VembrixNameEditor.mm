#import "platform/macos/menubar/VembrixNameEditor.h"

#include <optional>

#include "platform/Token.h"
#import "platform/macos/menubar/EditingKeys.h"
#import "platform/macos/menubar/MenuTracking.h"
#include "platform/macos/menubar/NameEditing.h"
#import "platform/macos/menubar/SpaceRowParts.h"
#import "platform/macos/menubar/VembrixCaret.h"
#import "platform/macos/menubar/VembrixNamePanel.h"
#import "platform/macos/support/SystemVersion.h"

using namespace vembrix;

@interface VembrixNameEditor ()
- (NameField::Keyboard)keyboard;
- (void)askForKeyboard:(NameField::Selection)selection;
- (void)openPanel;
- (void)closePanel;
- (BOOL)hasMarkedText;
@end

namespace {

MenuKeys menuKeys() {
  return isAtLeast(SystemRelease::Sonoma) ? MenuKeys::ToFirstResponder : MenuKeys::Monitored;
}

/// Forwards NameEditing's calls to the editor, which owns this object.
class NativeNameField : public NameField {
 public:
  explicit NativeNameField(VembrixNameEditor* editor) : editor_(editor) {}

  Keyboard keyboard() const override { return [editor_ keyboard]; }
  void askForKeyboard(Selection selection) override { [editor_ askForKeyboard:selection]; }
  void openPanel() override { [editor_ openPanel]; }
  void closePanel() override { [editor_ closePanel]; }
  bool hasMarkedText() const override { return [editor_ hasMarkedText]; }

 private:
  /// The editor lives longer than this object.
  __unsafe_unretained VembrixNameEditor* const editor_;
};

/// Returns the text view in which the field is being edited; nil if it is not.
NSTextView* editorOf(NSTextField* field) {
  NSText* editor = field.currentEditor;
  return [editor isKindOfClass:[NSTextView class]] ? static_cast<NSTextView*>(editor) : nil;
}

}  // namespace

@implementation VembrixNameEditor {
  NSTextField* _field;
  __weak NSView* _row;
  std::optional<NativeNameField> _nameField;
  std::optional<NameEditing> _editing;
  VembrixCaret* _caret;
  VembrixNamePanel* _panel;
  /// The row's frame on the screen when it was last in a window, and the window's level; empty
  /// before that.
  NSRect _rowOnScreen;
  NSWindowLevel _menuLevel;
  /// The selection when the field last had the keyboard.
  std::optional<NSRange> _selection;
  /// The event monitor, used up to macOS 13.
  id _monitor;
  /// Set while the panel is open.
  Token _menuKeyPresses;
}

- (instancetype)initWithField:(NSTextField*)field
                          row:(NSView*)row
                      handler:(SpaceRowHandler*)handler {
  self = [super init];
  if (!self) return nil;
  _field = field;
  _row = row;
  _caret = [[VembrixCaret alloc] init];
  _nameField.emplace(self);
  _editing.emplace(*_nameField, *handler);
  field.delegate = self;
  return self;
}

- (void)dealloc {
  [self removeMonitor];
}

- (void)beginWithText:(NSString*)text {
  _field.stringValue = text;
  _field.hidden = NO;
  _selection.reset();
  if (_row.window) [self start];
}

- (void)start {
  [self rememberPlace];
  [self installMonitor];
  _editing->begin();
}

- (void)rowDidEnterWindow {
  [self start];
}

- (void)rowWillLeaveWindow {
  [self stop];
}

- (void)look {
  if (!_editing->isEditing()) return;
  [self rememberPlace];
  _editing->look();
  [self showCaret];
}

/// Ends editing. The field editor belongs to the window, so it is given back before the row leaves
/// it.
- (void)stop {
  _editing->end();
  [self removeMonitor];
  [_caret hide];
  [self dropFieldEditor];
}

- (void)end {
  [self stop];
  _field.hidden = YES;
}

- (void)invalidate {
  _editing->invalidate();
  [self end];
  _field.delegate = nil;
}

- (NSString*)text {
  return _panel ? _panel.field.stringValue : _field.stringValue;
}

/// Returns the text view in which the name is being edited, in the menu or in the panel; nil while
/// the field waits for the keyboard.
- (NSTextView*)fieldEditor {
  return editorOf(_panel ? _panel.field : _field);
}

#pragma mark The keyboard

- (NameField::Keyboard)keyboard {
  NSWindow* window = _row.window;
  if (!window) return NameField::Keyboard::NoWindow;
  NSTextView* editor = editorOf(_field);
  return editor && window.firstResponder == editor ? NameField::Keyboard::InField
                                                   : NameField::Keyboard::Elsewhere;
}

- (void)askForKeyboard:(NameField::Selection)selection {
  NSWindow* window = _row.window;
  // Input methods follow the key window. Whether the menu's window may be it depends on the system.
  if (!window.keyWindow && window.canBecomeKeyWindow) [window makeKeyWindow];
  [window makeFirstResponder:_field];
  [self select:selection];
  [self showCaret];
}

- (void)select:(NameField::Selection)selection {
  NSTextView* editor = [self fieldEditor];
  const bool isAll = selection == NameField::Selection::All || !_selection;
  if (isAll || NSMaxRange(*_selection) > editor.string.length) {
    [editor selectAll:nil];
  } else {
    editor.selectedRange = *_selection;
  }
}

/// Remembers position and selection for the time when the row is in no window, or has lost the
/// keyboard.
- (void)rememberPlace {
  NSWindow* window = _row.window;
  if (!window) return;
  NSView* row = _row;
  _rowOnScreen = [window convertRectToScreen:[row convertRect:row.bounds toView:nil]];
  _menuLevel = window.level;
  if (NSTextView* editor = editorOf(_field)) _selection = editor.selectedRange;
}

- (void)showCaret {
  NSTextView* editor = [self fieldEditor];
  if (editor && drawsOwnCaret(menuKeys(), editor.window.keyWindow)) {
    [_caret showIn:editor];
  } else {
    [_caret hide];
  }
}

/// Gives the field editor back to the window and the keyboard to the menu. Does nothing if the
/// field does not have them.
- (void)dropFieldEditor {
  NSTextView* editor = editorOf(_field);
  if (!editor) return;
  if (editor.hasMarkedText) [editor.inputContext discardMarkedText];
  [_field abortEditing];
  [_row.window makeFirstResponder:nil];
}

#pragma mark The panel

- (void)openPanel {
  if (NSIsEmptyRect(_rowOnScreen)) return;
  [_caret hide];
  [self dropFieldEditor];
  NSTextField* field = makeNameField(_field.font, _field.accessibilityLabel);
  field.frame = _field.frame;
  field.stringValue = _field.stringValue;
  field.delegate = self;
  _panel = [[VembrixNamePanel alloc] initWithField:field row:_rowOnScreen level:_menuLevel + 1];
  _panel.appearance = _row.effectiveAppearance;
  [_panel open];
  [self select:NameField::Selection::AsItWas];
  [self showCaret];
  __weak VembrixNameEditor* weakSelf = self;
  _menuKeyPresses = takeMenuKeyPresses(^bool(NSEvent* event) {
    VembrixNameEditor* editor = weakSelf;
    [editor eventAfterKeyDown:event];
    return editor && editor->_panel;
  });
  // The panel closes with the menu, even if the row is not notified.
  [NSNotificationCenter.defaultCenter addObserver:self
                                         selector:@selector(menuDidClose)
                                             name:NSMenuDidEndTrackingNotification
                                           object:_row.enclosingMenuItem.menu];
}

- (void)closePanel {
  _menuKeyPresses.reset();
  [NSNotificationCenter.defaultCenter removeObserver:self
                                                name:NSMenuDidEndTrackingNotification
                                              object:nil];
  if (!_panel) return;
  [_caret hide];
  VembrixNamePanel* panel = _panel;
  NSTextView* editor = [self fieldEditor];
  if (editor.hasMarkedText) [editor.inputContext discardMarkedText];
  panel.field.delegate = nil;
  [self takeTextOf:panel];
  _panel = nil;
  [panel dismiss];
}

/// Copies the panel's text to the field, unless the field is being edited, whose text is then
/// newer.
- (void)takeTextOf:(VembrixNamePanel*)panel {
  if (!editorOf(_field)) _field.stringValue = panel.field.stringValue;
}

- (void)menuDidClose {
  [self stop];
}

/// Keeps the text of the field under the panel the same, so that a click into it continues from
/// there.
- (void)controlTextDidChange:(NSNotification*)notification {
  if (_panel && notification.object == _panel.field) [self takeTextOf:_panel];
}

#pragma mark Key presses

- (BOOL)hasMarkedText {
  return [self fieldEditor].hasMarkedText;
}

- (void)installMonitor {
  [self removeMonitor];
  if (menuKeys() != MenuKeys::Monitored) return;
  __weak VembrixNameEditor* weakSelf = self;
  _monitor = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                   handler:^NSEvent*(NSEvent* event) {
                                                     VembrixNameEditor* editor = weakSelf;
                                                     if (!editor) return event;
                                                     return [editor eventAfterKeyDown:event];
                                                   }];
}

- (void)removeMonitor {
  if (!_monitor) return;
  [NSEvent removeMonitor:_monitor];
  _monitor = nil;
}

/// Returns the event, or nil if it was handled.
- (NSEvent*)eventAfterKeyDown:(NSEvent*)event {
  switch (_editing->keyDown(event.keyCode)) {
    case KeyHandling::Passed:
      return event;
    case KeyHandling::Swallowed:
      return nil;
    case KeyHandling::Interpreted:
      NSTextView* editor = [self fieldEditor];
      if (!editor) return event;
      if (!performEditCommand(event, editor)) [editor interpretKeyEvents:@[ event ]];
      return nil;
  }
}

- (BOOL)performEditCommand:(NSEvent*)event {
  NSTextView* editor = _editing->isEditing() ? [self fieldEditor] : nil;
  return editor && performEditCommand(event, editor);
}

- (BOOL)control:(NSControl*)control
               textView:(NSTextView*)textView
    doCommandBySelector:(SEL)commandSelector {
  if (commandSelector == @selector(insertNewline:)) {
    return _editing->perform(NameEditing::Command::InsertNewline);
  }
  if (commandSelector == @selector(cancelOperation:)) {
    return _editing->perform(NameEditing::Command::Cancel);
  }
  return NO;
}

@end
