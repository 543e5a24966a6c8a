#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/SpaceRowView.h"

namespace vembrix {

/// An item that does something when it is chosen.
struct MenuCommand {
  /// What the system does by itself.
  enum class Standard { Terminate };

  std::string title;
  /// Nothing for the menu's own font.
  std::optional<Font> font;
  /// Pressed with the command key (Control where there is none); one character.
  std::string keyEquivalent;
  /// A closure runs after the menu has closed.
  std::variant<Standard, std::function<void()>> action;
};

struct MenuSeparator {};

/// A row is as wide as it comes, or as the menu where that is wider.
using MenuItem = std::variant<MenuSeparator, MenuCommand, std::unique_ptr<SpaceRowView>>;

/// Face: the menu that a status item drops down. Main thread.
class DropdownMenu {
 public:
  static std::unique_ptr<DropdownMenu> create();

  virtual ~DropdownMenu() = default;

  /// Called each time the menu is about to open, before it is laid out. It may
  /// set the items. Null for none.
  virtual void setNeedsUpdateHandler(std::function<void()> handler) = 0;

  /// Nothing follows the system.
  virtual void setAppearance(std::optional<Appearance> appearance) = 0;

  /// In place of all that were there, which end here. Not to be called while the
  /// menu is open.
  virtual void setItems(std::vector<MenuItem> items) = 0;
};

}  // namespace vembrix
