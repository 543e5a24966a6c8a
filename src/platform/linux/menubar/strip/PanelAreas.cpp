#include "platform/linux/menubar/strip/PanelAreas.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vembrix {
namespace {

/// Hidden panels leave this much, in pixels, at the edge.
constexpr int kThinnestPanel = 8;
/// Larger than any screen; numbers of other programs are not trusted.
constexpr std::uint32_t kMaxCoordinate = 0x7FFF;

int coordinate(std::uint32_t value) {
  return static_cast<int>(std::min(value, kMaxCoordinate));
}

QMargins thicknessOf(const Strut& strut) {
  return {coordinate(strut[0]), coordinate(strut[2]), coordinate(strut[1]), coordinate(strut[3])};
}

/// Returns the monitor that holds most of the window.
QRect monitorOf(const QRect& window, const std::vector<QRect>& monitors) {
  QRect best;
  int most = 0;
  for (const QRect& monitor : monitors) {
    const QRect part = monitor & window;
    const int area = part.isEmpty() ? 0 : part.width() * part.height();
    if (area <= most) continue;
    most = area;
    best = monitor;
  }
  return best;
}

/// Sets the area's extent along the edge: the strut's, or the window's if the strut states none.
QRect withSpan(const QRect& area, const Strut& strut, const QRect& window, std::size_t edge) {
  const int start = coordinate(strut[4 + 2 * edge]);
  const int end = coordinate(strut[5 + 2 * edge]);
  const bool isSaid = end > start;
  QRect result = area;
  if (edge < 2) {
    result.setTop(isSaid ? start : window.top());
    result.setBottom(isSaid ? end : window.bottom());
  } else {
    result.setLeft(isSaid ? start : window.left());
    result.setRight(isSaid ? end : window.right());
  }
  return result;
}

int explained(int value, int docks, int own, int before) {
  if (value > std::max(docks, own)) return value;
  return value < before ? 0 : before;
}

}  // namespace

std::vector<QRect> panelAreas(const DockFacts& dock, const std::vector<QRect>& monitors) {
  if (!dock.isMapped) return {};
  const QRect monitor = monitorOf(dock.geometry, monitors);
  if (monitor.isEmpty()) return {};
  std::vector<QRect> areas;
  if (dock.strut) {
    QRect screen;
    for (const QRect& other : monitors) screen |= other;
    const QMargins thickness = thicknessOf(*dock.strut);
    const std::array<QRect, 4> edges = {
        QRect(screen.left(), screen.top(), thickness.left(), screen.height()),
        QRect(screen.right() + 1 - thickness.right(), screen.top(), thickness.right(),
              screen.height()),
        QRect(screen.left(), screen.top(), screen.width(), thickness.top()),
        QRect(screen.left(), screen.bottom() + 1 - thickness.bottom(), screen.width(),
              thickness.bottom())};
    for (std::size_t edge = 0; edge < edges.size(); ++edge) {
      if (edges[edge].isEmpty()) continue;
      const QRect area = withSpan(edges[edge], *dock.strut, dock.geometry, edge) & monitor;
      if (!area.isEmpty()) areas.push_back(area);
    }
  }
  if (areas.empty()) areas.push_back(dock.geometry & monitor);
  std::erase_if(areas, [](const QRect& area) {
    return std::min(area.width(), area.height()) < kThinnestPanel;
  });
  return areas;
}

QMargins reservedByDocks(const std::vector<DockFacts>& docks) {
  QMargins most;
  for (const DockFacts& dock : docks) {
    if (!dock.isMapped || !dock.strut) continue;
    const QMargins thickness = thicknessOf(*dock.strut);
    most = most | thickness;
  }
  return most;
}

QMargins windowManagerPanels(const QMargins& before, const QRect& workArea, const QRect& screen,
                             const QMargins& docks, const QMargins& own) {
  if (!screen.contains(workArea) || workArea.isEmpty()) return {};
  return {explained(workArea.left() - screen.left(), docks.left(), own.left(), before.left()),
          explained(workArea.top() - screen.top(), docks.top(), own.top(), before.top()),
          explained(screen.right() - workArea.right(), docks.right(), own.right(), before.right()),
          explained(screen.bottom() - workArea.bottom(), docks.bottom(), own.bottom(),
                    before.bottom())};
}

std::vector<QRect> edgeAreas(const QMargins& thickness, const QRect& screen) {
  const QRect inner = screen - thickness;
  std::vector<QRect> areas = {
      {screen.left(), screen.top(), thickness.left(), screen.height()},
      {inner.right() + 1, screen.top(), thickness.right(), screen.height()},
      {screen.left(), screen.top(), screen.width(), thickness.top()},
      {screen.left(), inner.bottom() + 1, screen.width(), thickness.bottom()}};
  std::erase_if(areas, [](const QRect& area) { return area.isEmpty(); });
  return areas;
}

}  // namespace vembrix
