#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/DropdownMenu.h"
#include "platform/embedded/faces/RecordingSpaceRowView.h"

namespace vembrix {

/// A menu that records its state and that a test uses as a user does.
class RecordingDropdownMenu : public DropdownMenu {
 public:
  void setNeedsUpdateHandler(std::function<void()> handler) override;
  void setAppearance(std::optional<Appearance> appearance) override { appearance_ = appearance; }
  void setItems(std::vector<MenuItem> items) override;

  std::optional<Appearance> appearance() const { return appearance_; }
  const std::vector<MenuItem>& items() const { return items_; }
  bool isOpen() const { return isOpen_; }

  /// The items as texts: the label of a row, the title of a command, "-".
  std::vector<std::string> titles() const;
  /// The rows in order, valid until the items are set again.
  std::vector<RecordingSpaceRowView*> rows() const;
  /// The command of that title, or null.
  const MenuCommand* command(std::string_view title) const;

  // What the user does.

  /// Does nothing while the menu is open; neither does close() while it is closed.
  void open();
  void close();
  /// Moves the keyboard's selection to the item of that index, or removes it.
  void highlight(std::optional<std::size_t> place);
  /// Presses a key in the open menu. A row that is edited receives it first; else Escape closes the
  /// menu, and Return and Enter choose the selected item.
  void press(RowKey key);
  /// Presses a command key in the open menu.
  void pressKeyEquivalent(std::string_view key);
  /// Chooses the command of that title.
  void choose(std::string_view title);

  /// Cancels the editing of the row that is edited, if any.
  void cancelEditing();

 private:
  RecordingSpaceRowView* rowAt(std::optional<std::size_t> place) const;
  /// Whether an edited row has taken the key.
  bool pressInRow(RowKey key);
  void choose(const MenuCommand& command);

  std::function<void()> needsUpdate_;
  std::optional<Appearance> appearance_;
  std::vector<MenuItem> items_;
  std::optional<std::size_t> highlighted_;
  bool isOpen_ = false;
};

}  // namespace vembrix
