#pragma once

#include <optional>
#include <span>

#include "platform/Geometry.h"

namespace vembrix {

/// A display, as far as its menu bar goes. Points, global coordinates.
struct MenuBarScreen {
  Rect frame;
  /// What the camera takes of the top edge; empty where there is none.
  Rect notch;
};

/// What the system says of the window that a status item is in.
struct ItemWindow {
  Rect frame;
  /// As far as windows go: the camera does not count, and behind it a window is visible.
  bool isVisible = false;
};

/// The part of a screen's top edge between the two areas beside the camera, each of which
/// is empty where there is none.
Rect notchBetween(const Rect& screen, const Rect& leftArea, const Rect& rightArea);

/// Whether a user sees at least half of the item. Not so behind the camera, outside all
/// screens, where macOS puts items that have no room, or under a full-screen window.
bool isItemSeen(const std::optional<ItemWindow>& item, std::span<const MenuBarScreen> screens);

}  // namespace vembrix
