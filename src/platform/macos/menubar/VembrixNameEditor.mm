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

/// The way from NameEditing to its editor, which owns it.
class NativeNameField : public NameField {
 public:
  explicit NativeNameField(VembrixNameEditor* editor) : editor_(editor) {}

  Keyboard keyboard() const override { return [editor_ keyboard]; }
  void askForKeyboard(Selection selection) override { [editor_ askForKeyboard:selection]; }
  void openPanel() override { [editor_ openPanel]; }
  void closePanel() override { [editor_ closePanel]; }
  bool hasMarkedText() const override { return [editor_ hasMarkedText]; }

 private:
  /// Lives longer than this.
  __unsafe_unretained VembrixNameEditor* const editor_;
};

/// What a field is being edited in; nil while it is not.
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
  /// Where the row was on the screen when it was last in a window, and the level of
  /// that; empty before.
  NSRect _rowOnScreen;
  NSWindowLevel _menuLevel;
  /// What was selected when the field last had the keyboard.
  std::optional<NSRange> _selection;
  /// Up to macOS 13.
  id _monitor;
  /// While the panel is open.
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

/// The field editor belongs to the window: it is given back before the row leaves it.
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

/// What the name is edited in now, in the menu or in the panel; nil while the field is
/// waiting for the keyboard.
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
  // Input methods go with the key window. A menu's may be it or may not, which is the
  // system's to say.
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

/// For what comes when the row is in no window, or has lost the keyboard.
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

/// Gives the field editor back to the window and the keyboard to the menu. Does
/// nothing when the field does not have them.
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

/// Where the field is edited by now, its text is the later one.
- (void)takeTextOf:(VembrixNamePanel*)panel {
  if (!editorOf(_field)) _field.stringValue = panel.field.stringValue;
}

- (void)menuDidClose {
  [self stop];
}

/// The field, under the panel, has the same text, so that a click into it goes on from
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

/// Nil when the event is done with.
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
