#import "platform/macos/menubar/EditingKeys.h"

namespace vembrix {
namespace {

// Of keys, not of characters: the same in every keyboard layout.
constexpr unsigned short kReturnKey = 36;
constexpr unsigned short kEscapeKey = 53;
constexpr unsigned short kKeypadEnterKey = 76;

constexpr NSEventModifierFlags kShortcutModifiers =
    NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagControl |
    NSEventModifierFlagShift;

bool performCommandKey(unichar character, NSTextView* editor) {
  switch (character) {
    case 'x':
      [editor cut:nil];
      return true;
    case 'c':
      [editor copy:nil];
      return true;
    case 'v':
      [editor paste:nil];
      return true;
    case 'a':
      [editor selectAll:nil];
      return true;
    case 'z':
      if (editor.undoManager.canUndo) [editor.undoManager undo];
      return true;
    default:
      return false;
  }
}

}  // namespace

RowKey rowKey(NSEvent* event, NSTextView* editor) {
  // Return takes the word that the input method proposes, Escape drops it.
  if (editor.hasMarkedText) return RowKey::Other;
  switch (event.keyCode) {
    case kReturnKey:
      return RowKey::Return;
    case kKeypadEnterKey:
      return RowKey::KeypadEnter;
    case kEscapeKey:
      return RowKey::Escape;
    default:
      return RowKey::Other;
  }
}

bool performEditCommand(NSEvent* event, NSTextView* editor) {
  const NSEventModifierFlags modifiers = event.modifierFlags & kShortcutModifiers;
  if (!(modifiers & NSEventModifierFlagCommand)) return false;
  // As the layout has it with the Command key, which gives Latin letters in most
  // layouts that have none by themselves.
  NSString* characters = [event charactersByApplyingModifiers:NSEventModifierFlagCommand];
  if (characters.length != 1) return false;
  const unichar character = [characters.lowercaseString characterAtIndex:0];
  switch (modifiers) {
    case NSEventModifierFlagCommand:
      return performCommandKey(character, editor);
    case NSEventModifierFlagCommand | NSEventModifierFlagShift:
      if (character != 'z') return false;
      if (editor.undoManager.canRedo) [editor.undoManager redo];
      return true;
    case NSEventModifierFlagCommand | NSEventModifierFlagControl:
      if (character != ' ') return false;
      [NSApp orderFrontCharacterPalette:nil];
      return true;
    default:
      return false;
  }
}

}  // namespace vembrix
