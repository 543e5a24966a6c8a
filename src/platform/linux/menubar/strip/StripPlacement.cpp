#include "platform/linux/menubar/strip/StripPlacement.h"

#include <algorithm>
#include <cstdlib>

namespace vembrix {
namespace {

using Edge = StripPlace::Edge;
using Side = StripPlace::Side;

/// Returns the right end of the rightmost free part; empty if the strip does not fit.
std::optional<QRect> lastFreeIn(const QRect& monitor, int y, const QSize& size,
                                const std::vector<QRect>& panels) {
  QRect strip({monitor.left() + monitor.width() - size.width(), y}, size);
  while (strip.left() >= monitor.left()) {
    const auto obstacle =
        std::ranges::find_if(panels, [&](const QRect& panel) { return panel.intersects(strip); });
    if (obstacle == panels.end()) return strip;
    strip.moveLeft(obstacle->left() - size.width());
  }
  return std::nullopt;
}

/// Returns the tops of the rows where a strip may be at that edge: at the edge itself and behind
/// each panel, the nearest first.
std::vector<int> rowsAt(Edge edge, const QRect& monitor, int height,
                        const std::vector<QRect>& panels) {
  const bool isTop = edge == Edge::Top;
  std::vector<int> rows{isTop ? monitor.top() : monitor.bottom() + 1 - height};
  for (const QRect& panel : panels) {
    const int row = isTop ? panel.bottom() + 1 : panel.top() - height;
    // No strip is placed behind a panel that fills half of the monitor.
    if (std::abs(row - rows.front()) <= monitor.height() / 2) rows.push_back(row);
  }
  std::ranges::sort(rows);
  if (!isTop) std::ranges::reverse(rows);
  return rows;
}

/// Returns the parts of the panels that are on the monitor.
std::vector<QRect> panelsOn(const QRect& monitor, const std::vector<QRect>& panels) {
  std::vector<QRect> here;
  for (const QRect& panel : panels) {
    const QRect part = panel & monitor;
    if (!part.isEmpty()) here.push_back(part);
  }
  return here;
}

Edge edgeOf(const QRect& rect, const QRect& monitor) {
  return rect.center().y() <= monitor.center().y() ? Edge::Top : Edge::Bottom;
}

/// Returns whether a strip of that height is readable on the panel.
bool canCarry(const QRect& panel, int height) {
  return panel.width() > panel.height() && panel.height() * 2 >= height;
}

QRect defaultGeometry(const StripSurroundings& surroundings, const QSize& size) {
  const QRect monitor =
      surroundings.monitors.empty() ? QRect({}, size) : surroundings.monitors.front();
  const QSize fitting(std::min(size.width(), monitor.width()), size.height());
  const auto panels = panelsOn(monitor, surroundings.panels);
  for (const int row : rowsAt(Edge::Top, monitor, fitting.height(), panels)) {
    if (const auto free = lastFreeIn(monitor, row, fitting, panels)) return *free;
  }
  return {{monitor.left() + monitor.width() - fitting.width(), monitor.top()}, fitting};
}

/// Returns the user's part of the edge, in the nearest row.
QRect alongEdge(const StripPlace& place, const QRect& monitor, const QSize& size) {
  const int width = std::min(size.width(), monitor.width());
  const int room = monitor.width() - width;
  const int offset = std::clamp(place.offset, 0, room);
  const int x = monitor.left() + (place.side == Side::Left ? offset : room - offset);
  const int y = place.edge == Edge::Top ? monitor.top() : monitor.bottom() + 1 - size.height();
  return {x, y, width, size.height()};
}

std::optional<QRect> onPanel(const QRect& strip, const StripPlace& place, const QRect& monitor,
                             const std::vector<QRect>& panels) {
  for (const QRect& panel : panels) {
    if (edgeOf(panel, monitor) != place.edge || !canCarry(panel, strip.height())) continue;
    const int center = strip.center().x();
    if (center < panel.left() || center > panel.right()) continue;
    const int height = std::min(strip.height(), panel.height());
    return QRect(strip.left(), panel.top() + (panel.height() - height) / 2, strip.width(), height);
  }
  return std::nullopt;
}

bool spansOverlap(const QRect& a, const QRect& b) {
  return a.left() <= b.right() && b.left() <= a.right();
}

int distanceTo(const QRect& rect, const QPoint& point) {
  const int x = std::max({rect.left() - point.x(), 0, point.x() - rect.right()});
  const int y = std::max({rect.top() - point.y(), 0, point.y() - rect.bottom()});
  return x + y;
}

}  // namespace

StripPosition stripPosition(const StripSurroundings& surroundings, const QSize& size,
                            const std::optional<StripPlace>& place) {
  if (!place || place->monitor >= surroundings.monitors.size()) {
    return {defaultGeometry(surroundings, size), Edge::Top, false};
  }
  const QRect& monitor = surroundings.monitors[place->monitor];
  const auto panels = panelsOn(monitor, surroundings.panels);
  QRect strip = alongEdge(*place, monitor, size);
  if (place->isOnPanel) {
    if (const auto carried = onPanel(strip, *place, monitor, panels)) {
      return {*carried, place->edge, true};
    }
  }
  const int edgeRow = strip.top();
  for (const int row : rowsAt(place->edge, monitor, size.height(), panels)) {
    strip.moveTop(row);
    const bool isFree =
        std::ranges::none_of(panels, [&](const QRect& panel) { return panel.intersects(strip); });
    if (isFree) return {strip, place->edge, false};
  }
  strip.moveTop(edgeRow);
  return {strip, place->edge, false};
}

std::optional<StripPlace> placeOfDrop(const StripSurroundings& surroundings, const QRect& strip) {
  if (surroundings.monitors.empty()) return std::nullopt;
  const QPoint center = strip.center();
  const auto nearest = std::ranges::min_element(
      surroundings.monitors, {}, [&](const QRect& monitor) { return distanceTo(monitor, center); });
  const QRect& monitor = *nearest;
  const auto panels = panelsOn(monitor, surroundings.panels);
  const auto panel = std::ranges::find_if(panels, [&](const QRect& candidate) {
    return candidate.contains(center) && canCarry(candidate, strip.height());
  });

  StripPlace place;
  place.monitor = static_cast<std::size_t>(nearest - surroundings.monitors.begin());
  place.isOnPanel = panel != panels.end();
  place.edge = edgeOf(place.isOnPanel ? *panel : strip, monitor);
  place.side = center.x() <= monitor.center().x() ? Side::Left : Side::Right;
  const int gap =
      place.side == Side::Left ? strip.left() - monitor.left() : monitor.right() - strip.right();
  place.offset = std::clamp(gap, 0, std::max(monitor.width() - strip.width(), 0));

  // Close to its usual place, by about its own height, the strip goes there and stores no place.
  const int reach = strip.height();
  if (place.monitor != 0 || place.edge != Edge::Top) return place;
  if (place.side == Side::Right && place.offset <= reach) return std::nullopt;
  const StripPosition position = stripPosition(surroundings, strip.size(), place);
  const QRect standard = defaultGeometry(surroundings, strip.size());
  const bool isStandard = !position.isOnPanel && position.geometry.top() == standard.top() &&
                          std::abs(position.geometry.left() - standard.left()) <= reach;
  return isStandard ? std::nullopt : std::optional(place);
}

Strut strutOf(const StripPosition& position, const std::vector<QRect>& monitors) {
  if (position.isOnPanel) return {};
  const QRect& strip = position.geometry;
  const bool isTop = position.edge == Edge::Top;
  int bottom = strip.bottom();
  for (const QRect& monitor : monitors) {
    bottom = std::max(bottom, monitor.bottom());
    const bool isBetween = isTop ? monitor.bottom() < strip.top() : monitor.top() > strip.bottom();
    if (isBetween && spansOverlap(monitor, strip)) return {};
  }
  const std::size_t edge = isTop ? 2 : 3;
  const auto pixels = [](int value) { return static_cast<std::uint32_t>(std::max(value, 0)); };
  Strut strut{};
  strut[edge] = pixels(isTop ? strip.bottom() + 1 : bottom + 1 - strip.top());
  strut[4 + 2 * edge] = pixels(strip.left());
  strut[5 + 2 * edge] = pixels(strip.right());
  return strut;
}

bool servesAs(const Strut& wanted, const Strut& kept) {
  // The difference between widths of titles, in pixels.
  constexpr std::uint32_t kSpare = 400;
  for (std::size_t edge = 0; edge < 4; ++edge) {
    const std::size_t begin = 4 + 2 * edge;
    const std::size_t end = begin + 1;
    if (wanted[edge] != kept[edge]) return false;
    if (wanted[edge] == 0) continue;
    if (kept[begin] > wanted[begin] || kept[end] < wanted[end]) return false;
    if ((kept[end] - kept[begin]) - (wanted[end] - wanted[begin]) > kSpare) return false;
  }
  return true;
}

}  // namespace vembrix
