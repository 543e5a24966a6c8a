#pragma once

#include <QRect>
#include <QSize>
#include <cstddef>
#include <optional>
#include <vector>

#include "platform/linux/support/Strut.h"

namespace vembrix {

// The placement of the status item's strip, in pixels of the X server's screen from its top left
// corner.

/// The strip's surroundings.
struct StripSurroundings {
  /// The primary monitor is the first.
  std::vector<QRect> monitors;
  /// The areas that panels cover or reserve.
  std::vector<QRect> panels;
};

/// The user's place for the strip: at an edge of a monitor, at a distance from one of its ends.
struct StripPlace {
  enum class Edge { Top, Bottom };
  enum class Side { Left, Right };

  /// An index into the monitors.
  std::size_t monitor = 0;
  Edge edge = Edge::Top;
  Side side = Side::Right;
  /// The distance between that side of the monitor and the same side of the strip.
  int offset = 0;
  /// Whether the strip is on the panel at that edge, if there is one, or behind it.
  bool isOnPanel = false;

  bool operator==(const StripPlace&) const = default;
};

struct StripPosition {
  QRect geometry;
  StripPlace::Edge edge = StripPlace::Edge::Top;
  /// Whether the strip is on a panel and reserves no space.
  bool isOnPanel = false;

  bool operator==(const StripPosition&) const = default;
};

/// Returns the position. Without a user's place it is at the right end of the primary monitor's top
/// edge, left of or below the panels there, or in the top right corner if there is no free place.
/// On a panel that is flatter than `size`, the strip is as flat as the panel.
StripPosition stripPosition(const StripSurroundings& surroundings, const QSize& size,
                            const std::optional<StripPlace>& place);

/// Returns the place for a strip dropped there: the nearest at an edge or on a panel. Empty at the
/// top right corner of the primary monitor and at the strip's default position.
std::optional<StripPlace> placeOfDrop(const StripSurroundings& surroundings, const QRect& strip);

/// Returns the space that the strip reserves: none on a panel, and none where another monitor,
/// which would lose it, lies between the strip and the edge of the X server's screen.
Strut strutOf(const StripPosition& position, const std::vector<QRect>& monitors);

/// Returns whether the strut `kept` makes a change to `wanted` unnecessary: it is as thick, and
/// covers the wanted part of the edge and little more. Each change makes window managers lay out
/// the whole screen again.
bool servesAs(const Strut& wanted, const Strut& kept);

}  // namespace vembrix
