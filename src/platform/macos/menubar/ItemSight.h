#pragma once

#include <optional>
#include <span>

#include "platform/Geometry.h"

namespace vembrix {

/// A display and its camera housing, in points, global coordinates.
struct MenuBarScreen {
  Rect frame;
  /// The part of the top edge behind the camera; empty if there is none.
  Rect notch;
};

/// The window of a status item, as the system reports it.
struct ItemWindow {
  Rect frame;
  /// Whether other windows leave it visible; a window behind the camera counts as visible.
  bool isVisible = false;
};

/// Returns the part of the screen's top edge between the two areas beside the camera, which are
/// empty on a screen without one.
Rect notchBetween(const Rect& screen, const Rect& leftArea, const Rect& rightArea);

/// Returns whether at least half of the item is visible: not behind the camera, outside all
/// screens, where macOS puts items without room, or under a full-screen window.
bool isItemSeen(const std::optional<ItemWindow>& item, std::span<const MenuBarScreen> screens);

}  // namespace vembrix
