#include "platform/macos/menubar/ItemSight.h"

#include <algorithm>

namespace vembrix {
namespace {

double overlap(double start, double length, double otherStart, double otherLength) {
  return std::max(0.0,
                  std::min(start + length, otherStart + otherLength) - std::max(start, otherStart));
}

double commonArea(const Rect& one, const Rect& other) {
  return overlap(one.x, one.width, other.x, other.width) *
         overlap(one.y, one.height, other.y, other.height);
}

}  // namespace

Rect notchBetween(const Rect& screen, const Rect& leftArea, const Rect& rightArea) {
  const bool isWhole = leftArea.width > 0 && rightArea.width > 0 && leftArea.height > 0;
  const double start = leftArea.x + leftArea.width;
  if (!isWhole || rightArea.x <= start) return {};
  return {start, screen.y + screen.height - leftArea.height, rightArea.x - start, leftArea.height};
}

bool isItemSeen(const std::optional<ItemWindow>& item, std::span<const MenuBarScreen> screens) {
  if (!item || !item->isVisible) return false;
  const Rect& frame = item->frame;
  double seen = 0;
  for (const MenuBarScreen& screen : screens) {
    seen += commonArea(frame, screen.frame) - commonArea(frame, screen.notch);
  }
  const double whole = frame.width * frame.height;
  return whole > 0 && seen >= whole / 2;
}

}  // namespace vembrix
