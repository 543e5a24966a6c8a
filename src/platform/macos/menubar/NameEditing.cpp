#include "platform/macos/menubar/NameEditing.h"

namespace vembrix {

void NameEditing::begin() {
  end();
  if (!handler_) return;
  isEditing_ = true;
  hadKeyboard_ = false;
  requests_ = 0;
  look();
}

void NameEditing::look() {
  if (!isEditing_) return;
  if (field_.keyboard() == NameField::Keyboard::InField) {
    hadKeyboard_ = true;
    // The user has clicked into the field below the panel.
    closePanel();
  } else if (!panelIsOpen_) {
    ask();
  }
}

void NameEditing::ask() {
  if (requests_ == requestLimit) {
    panelIsOpen_ = true;
    field_.openPanel();
    return;
  }
  requests_ += 1;
  // Without a window there is none to ask, and the row may never get one.
  if (field_.keyboard() == NameField::Keyboard::NoWindow) return;
  field_.askForKeyboard(hadKeyboard_ ? NameField::Selection::AsItWas : NameField::Selection::All);
}

void NameEditing::end() {
  isEditing_ = false;
  closePanel();
}

void NameEditing::closePanel() {
  if (!panelIsOpen_) return;
  panelIsOpen_ = false;
  field_.closePanel();
}

void NameEditing::invalidate() {
  handler_ = nullptr;
  end();
}

KeyHandling NameEditing::keyDown(unsigned short keyCode) {
  if (!isEditing_) return KeyHandling::Passed;
  return handler_->keyDown(rowKey(keyCode, field_.hasMarkedText()));
}

bool NameEditing::perform(Command command) {
  if (!isEditing_ || field_.hasMarkedText()) return false;
  switch (command) {
    case Command::InsertNewline:
      handler_->commit();
      return true;
    case Command::Cancel:
      handler_->cancel();
      return true;
  }
  return false;
}

}  // namespace vembrix
