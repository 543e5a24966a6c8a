#pragma once

#include <QMargins>
#include <QRect>
#include <optional>
#include <vector>

#include "platform/linux/Strut.h"

namespace vembrix {

// Which part of the screen panels take. Pixels of the X server, from the top left corner
// of its screen.

/// A panel's window as the X server has it.
struct DockFacts {
  QRect geometry;
  bool isMapped = false;
  /// Nothing: it says none.
  std::optional<Strut> strut;

  bool operator==(const DockFacts&) const = default;
};

/// What the panel keeps free on the monitor that it is on; where it stands if it keeps
/// nothing free. Empty for a panel that is hidden, or so thin that it waits for the
/// pointer.
std::vector<QRect> panelAreas(const DockFacts& dock, const std::vector<QRect>& monitors);

/// How much the docks keep free at each edge of the X server's screen.
QMargins reservedByDocks(const std::vector<DockFacts>& docks);

/// How much the window manager keeps free at each edge for panels of its own, which are
/// no windows that others see: what `workArea` leaves of the `screen` and nobody else
/// explains. `own`: what the strip keeps free; panels that are not thicker hide behind
/// it, and count as they did `before`.
QMargins windowManagerPanels(const QMargins& before, const QRect& workArea, const QRect& screen,
                             const QMargins& docks, const QMargins& own);

/// The areas of those.
std::vector<QRect> edgeAreas(const QMargins& thickness, const QRect& screen);

}  // namespace vembrix
