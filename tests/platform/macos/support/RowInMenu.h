#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/macos/menubar/NameEditing.h"

namespace vembrix {

/// A real row in a simulated open menu, whose window gives and takes the keyboard as a test
/// demands. Connected in the same way as by the row's view.
class RowInMenu : public SpaceRowView, public NameField {
 public:
  RowInMenu()
      : row_("Mail",
             {.onSwitch = [this] { switches_ += 1; },
              .onCommitRename = [this](std::string_view name) { names_.emplace_back(name); }}),
        editing_(*this, row_) {
    row_.attach(*this);
    row_.setShown(true);
  }

  // The behaviour of the menu's window.

  /// Makes the next `times` requests fail.
  void refuse(int times) { refusals_ = times; }
  void takeKeyboardBack() { hasKeyboard_ = false; }
  void setHasWindow(bool hasWindow) {
    hasWindow_ = hasWindow;
    if (!hasWindow) hasKeyboard_ = false;
  }
  void close() {
    editing_.end();
    hasKeyboard_ = false;
    row_.setShown(false);
  }

  // Actions of the user and the system.

  void clickPencil() { row_.renameClicked(); }
  void clickIntoField() { hasKeyboard_ = true; }
  void lookOften(int times) {
    for (int look = 0; look < times; ++look) editing_.look();
  }
  /// Types in place of the selection, if the name has the keyboard.
  void type(const std::string& text) {
    if (!hasKeyboard_ && !editing_.panelIsOpen()) return;
    text_ = std::exchange(isAllSelected_, false) ? text : text_ + text;
  }
  void setMarkedText(bool isMarked) { isMarked_ = isMarked; }

  NameEditing& editing() { return editing_; }
  SpaceRow& row() { return row_; }

  // Results.

  const SpaceRowState& state() const { return state_; }
  const std::vector<std::string>& names() const { return names_; }
  int switches() const { return switches_; }
  const std::vector<Selection>& requests() const { return requests_; }
  int panels() const { return panels_; }
  bool panelIsShown() const { return panelIsShown_; }

  // SpaceRowView
  void setState(const SpaceRowState& state) override {
    const SpaceRowState old = std::exchange(state_, state);
    if (old.isEditing && !state.isEditing) {
      editing_.end();
      hasKeyboard_ = false;
    }
    if (old.isEditing || !state.isEditing) return;
    text_ = state.label;
    if (hasWindow_) editing_.begin();
  }
  std::string editedText() const override { return text_; }
  void closeMenu() override { close(); }

  // NameField
  Keyboard keyboard() const override {
    if (!hasWindow_) return Keyboard::NoWindow;
    return hasKeyboard_ ? Keyboard::InField : Keyboard::Elsewhere;
  }
  void askForKeyboard(Selection selection) override {
    requests_.push_back(selection);
    if (refusals_ > 0) {
      refusals_ -= 1;
      return;
    }
    hasKeyboard_ = true;
    isAllSelected_ = selection == Selection::All;
  }
  void openPanel() override {
    panels_ += 1;
    panelIsShown_ = true;
    isAllSelected_ = true;
  }
  void closePanel() override { panelIsShown_ = false; }
  bool hasMarkedText() const override { return isMarked_; }

 private:
  std::vector<std::string> names_;
  int switches_ = 0;
  SpaceRow row_;
  NameEditing editing_;
  SpaceRowState state_;
  std::string text_;
  std::vector<Selection> requests_;
  int refusals_ = 0;
  int panels_ = 0;
  bool hasWindow_ = true;
  bool hasKeyboard_ = false;
  bool isAllSelected_ = false;
  bool isMarked_ = false;
  bool panelIsShown_ = false;
};

}  // namespace vembrix
