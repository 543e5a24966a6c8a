#pragma once

#include "platform/SpaceRowView.h"

namespace vembrix {

/// What happens to key presses while a menu is open.
enum class MenuKeys {
  /// A local event monitor sees them. Up to macOS 13.
  Monitored,
  /// No monitor sees them; they go to the first responder of the menu's window, if the
  /// menu has no use for them itself. From macOS 14 on.
  ToFirstResponder,
};

/// Whether a row draws the caret itself. AppKit draws none in a window that is not key,
/// and from macOS 14 on hides it while a menu is open.
constexpr bool drawsOwnCaret(MenuKeys keys, bool windowIsKey) {
  return keys == MenuKeys::ToFirstResponder || !windowIsKey;
}

/// What a key press means to a row whose name is being edited, by the number of the key,
/// which is the same in every keyboard layout. A key that an input method is waiting for
/// means nothing to the row: Return takes the word that it proposes, Escape drops it.
constexpr RowKey rowKey(unsigned short keyCode, bool hasMarkedText) {
  constexpr unsigned short kReturnKey = 36;
  constexpr unsigned short kEscapeKey = 53;
  constexpr unsigned short kKeypadEnterKey = 76;
  if (hasMarkedText) return RowKey::Other;
  if (keyCode == kReturnKey) return RowKey::Return;
  if (keyCode == kKeypadEnterKey) return RowKey::KeypadEnter;
  return keyCode == kEscapeKey ? RowKey::Escape : RowKey::Other;
}

/// Where the name of a row is edited on the screen: its edit field, and a panel of the
/// same look that can stand over it.
class NameField {
 public:
  enum class Keyboard {
    /// The field is being edited and the first responder of the menu's window.
    InField,
    /// The menu's window has another first responder.
    Elsewhere,
    /// The row is in no window, which systems have told of rows in open menus too.
    NoWindow,
  };
  enum class Selection {
    /// The whole text.
    All,
    /// What was selected when the field last had the keyboard; all, if it never had.
    AsItWas,
  };

  virtual ~NameField() = default;

  [[nodiscard]] virtual Keyboard keyboard() const = 0;
  /// Asks that the field become the first responder of the menu's window, which may
  /// refuse.
  virtual void askForKeyboard(Selection selection) = 0;
  /// Shows the panel over the row with the field's text and the keyboard, if the row's
  /// place on the screen is known.
  virtual void openPanel() = 0;
  /// The field has the panel's text then.
  virtual void closePanel() = 0;
  /// Whether an input method is composing text, in the field or in the panel.
  [[nodiscard]] virtual bool hasMarkedText() const = 0;
};

/// How the name of a row gets the keyboard while it is edited in an open menu: through the
/// menu's window, which is asked again as long as it refuses or takes the keyboard back,
/// or, where all asking was in vain, through the panel. Main thread. Knows no AppKit.
class NameEditing {
 public:
  /// How often the window is asked in one editing. At a look every
  /// row_metrics::kHoverInterval it has half a second, where it refuses each time.
  static constexpr int requestLimit = 10;

  /// The edit field's commands that mean something to the row.
  enum class Command { InsertNewline, Cancel };

  /// Both are the caller's. The handler has to live until invalidate().
  NameEditing(NameField& field, SpaceRowHandler& handler) : field_(field), handler_(&handler) {}

  /// The row is edited, in a window or not yet.
  void begin();
  /// To be called at every look, while the menu is open.
  void look();
  /// The row is not edited any more, or its menu has closed. Closes the panel.
  void end();
  /// Ends the editing; no other begins. The handler is told nothing any more.
  void invalidate();

  [[nodiscard]] bool isEditing() const { return isEditing_; }
  [[nodiscard]] bool panelIsOpen() const { return panelIsOpen_; }

  /// A key press, before the field or the panel has seen it.
  KeyHandling keyDown(unsigned short keyCode);
  /// The field or the panel was given the command, by whatever key. Whether the row has
  /// carried it out.
  bool perform(Command command);

 private:
  void ask();
  void closePanel();

  NameField& field_;
  /// Null once nobody is to be told; never while the row is edited.
  SpaceRowHandler* handler_;
  bool isEditing_ = false;
  bool panelIsOpen_ = false;
  /// The field has had the keyboard in this editing.
  bool hadKeyboard_ = false;
  int requests_ = 0;
};

}  // namespace vembrix
