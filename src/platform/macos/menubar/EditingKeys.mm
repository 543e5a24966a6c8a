#import "platform/macos/menubar/EditingKeys.h"

namespace vembrix {
namespace {

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

bool performEditCommand(NSEvent* event, NSTextView* editor) {
  const NSEventModifierFlags modifiers = event.modifierFlags & kShortcutModifiers;
  if (!(modifiers & NSEventModifierFlagCommand)) return false;
  // The characters with the Command key, which are Latin letters in most layouts without any.
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
