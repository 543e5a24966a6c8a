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
  /// An action that the system performs by itself.
  enum class Standard { Terminate };

  std::string title;
  /// Empty for the menu's own font.
  std::optional<Font> font;
  /// Pressed with the command key (Control where there is none); one character.
  std::string keyEquivalent;
  /// A closure runs after the menu has closed.
  std::variant<Standard, std::function<void()>> action;
  /// What is behind the command while it is selected; empty for the system's selection. Where the
  /// system draws the menu, as on macOS, the selection is always the system's.
  std::optional<Color> highlight = {};
};

struct MenuSeparator {};

/// A row has its own width, or the menu's where that is larger.
using MenuItem = std::variant<MenuSeparator, MenuCommand, std::unique_ptr<SpaceRowView>>;

/// Face: the menu that a status item drops down. Main thread.
class DropdownMenu {
 public:
  static std::unique_ptr<DropdownMenu> create();

  virtual ~DropdownMenu() = default;

  /// Sets what is called each time the menu is about to open, before its layout; null for none. The
  /// handler may set the items.
  virtual void setNeedsUpdateHandler(std::function<void()> handler) = 0;

  /// Sets a fixed appearance; empty to follow the system.
  virtual void setAppearance(std::optional<Appearance> appearance) = 0;

  /// Replaces and destroys all items. Must not be called while the menu is open.
  virtual void setItems(std::vector<MenuItem> items) = 0;
};

}  // namespace vembrix
