#pragma once

#include "platform/SpaceRowView.h"

namespace vembrix {

/// The route of key presses while a menu is open.
enum class MenuKeys {
  /// Local event monitors receive them: up to macOS 13.
  Monitored,
  /// No monitor receives them; those that the menu does not use go to the first responder of its
  /// window: from macOS 14 on.
  ToFirstResponder,
};

/// Returns whether a row draws the caret itself. AppKit draws none in a window that is not key, and
/// from macOS 14 on hides it while a menu is open.
constexpr bool drawsOwnCaret(MenuKeys keys, bool windowIsKey) {
  return keys == MenuKeys::ToFirstResponder || !windowIsKey;
}

/// Returns the meaning of a key press for a row that is edited, by the key code, which is the same
/// in every keyboard layout. While an input method composes, Return and Escape belong to it and are
/// Other.
constexpr RowKey rowKey(unsigned short keyCode, bool hasMarkedText) {
  constexpr unsigned short kReturnKey = 36;
  constexpr unsigned short kEscapeKey = 53;
  constexpr unsigned short kKeypadEnterKey = 76;
  if (hasMarkedText) return RowKey::Other;
  if (keyCode == kReturnKey) return RowKey::Return;
  if (keyCode == kKeypadEnterKey) return RowKey::KeypadEnter;
  return keyCode == kEscapeKey ? RowKey::Escape : RowKey::Other;
}

/// The places where a row's name is edited: its edit field, and a panel of the same look that can
/// cover it.
class NameField {
 public:
  enum class Keyboard {
    /// The field is being edited and the first responder of the menu's window.
    InField,
    /// The menu's window has another first responder.
    Elsewhere,
    /// The row is in no window, which systems also report for rows in open menus.
    NoWindow,
  };
  enum class Selection {
    /// The whole text.
    All,
    /// The former selection of the field; all text if it never had the keyboard.
    AsItWas,
  };

  virtual ~NameField() = default;

  [[nodiscard]] virtual Keyboard keyboard() const = 0;
  /// Asks the menu's window, which may refuse, to make the field its first responder.
  virtual void askForKeyboard(Selection selection) = 0;
  /// Shows the panel over the row, with the field's text and the keyboard, if the row's screen
  /// position is known.
  virtual void openPanel() = 0;
  /// Closes the panel and copies its text to the field.
  virtual void closePanel() = 0;
  /// Returns whether an input method is composing text in the field or the panel.
  [[nodiscard]] virtual bool hasMarkedText() const = 0;
};

/// Gets the keyboard for the name of a row that is edited in an open menu: from the menu's window,
/// which is asked repeatedly while it refuses or takes the keyboard back, or else through the
/// panel. Main thread. Independent of AppKit.
class NameEditing {
 public:
  /// Number of requests in one editing: half a second of refusals at one per
  /// row_metrics::kHoverInterval.
  static constexpr int requestLimit = 10;

  /// The edit field's commands that the row handles.
  enum class Command { InsertNewline, Cancel };

  /// The caller owns both. The handler must live until invalidate().
  NameEditing(NameField& field, SpaceRowHandler& handler) : field_(field), handler_(&handler) {}

  /// To be called when editing begins, even before the row is in a window.
  void begin();
  /// To be called at intervals while the menu is open.
  void look();
  /// To be called when editing ends or the menu has closed. Closes the panel.
  void end();
  /// Ends editing for good. The handler is no longer called.
  void invalidate();

  [[nodiscard]] bool isEditing() const { return isEditing_; }
  [[nodiscard]] bool panelIsOpen() const { return panelIsOpen_; }

  /// Handles a key press before the field or the panel receives it.
  KeyHandling keyDown(unsigned short keyCode);
  /// Handles a command of the field or the panel, whatever its key. Returns whether the row
  /// performed it.
  bool perform(Command command);

 private:
  void ask();
  void closePanel();

  NameField& field_;
  /// Null after invalidate(); never while the row is edited.
  SpaceRowHandler* handler_;
  bool isEditing_ = false;
  bool panelIsOpen_ = false;
  /// Whether the field has had the keyboard in this editing.
  bool hadKeyboard_ = false;
  int requests_ = 0;
};

}  // namespace vembrix
