#pragma once

#include <QMargins>
#include <QRect>
#include <optional>
#include <vector>

#include "platform/linux/support/Strut.h"

namespace vembrix {

// The parts of the screen that panels occupy, in pixels of the X server's screen from its top left
// corner.

/// A panel's window, as the X server describes it.
struct DockFacts {
  QRect geometry;
  bool isMapped = false;
  /// Empty if the panel states none.
  std::optional<Strut> strut;

  bool operator==(const DockFacts&) const = default;
};

/// Returns the areas that the panel reserves on its monitor, or its own area if it reserves none.
/// Empty for a hidden panel, or one so thin that it only waits for the pointer.
std::vector<QRect> panelAreas(const DockFacts& dock, const std::vector<QRect>& monitors);

/// Returns what the docks reserve at each edge of the X server's screen.
QMargins reservedByDocks(const std::vector<DockFacts>& docks);

/// Returns what the window manager reserves at each edge for built-in panels, which have no windows
/// that others see: the part of `screen` outside `workArea` that no other panel explains. `own` is
/// what the strip reserves; panels that are no thicker are hidden by it and keep their values in
/// `before`.
QMargins windowManagerPanels(const QMargins& before, const QRect& workArea, const QRect& screen,
                             const QMargins& docks, const QMargins& own);

/// Returns the areas of these margins.
std::vector<QRect> edgeAreas(const QMargins& thickness, const QRect& screen);

}  // namespace vembrix
