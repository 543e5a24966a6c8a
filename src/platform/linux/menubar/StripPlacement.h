#pragma once

#include <QRect>
#include <QSize>
#include <cstddef>
#include <optional>
#include <vector>

#include "platform/linux/Strut.h"

namespace vembrix {

// Where the strip of the status item stands. Pixels of the X server, from the top left
// corner of its screen.

/// What is around the strip.
struct StripSurroundings {
  /// The primary one first.
  std::vector<QRect> monitors;
  /// What panels stand on or keep free for themselves.
  std::vector<QRect> panels;
};

/// Where the user has put the strip: at an edge of a monitor, so far from one of its
/// ends.
struct StripPlace {
  enum class Edge { Top, Bottom };
  enum class Side { Left, Right };

  /// In the list of monitors.
  std::size_t monitor = 0;
  Edge edge = Edge::Top;
  Side side = Side::Right;
  /// From that side of the monitor to that of the strip.
  int offset = 0;
  /// On the panel at the edge, as long as there is one; else behind it.
  bool isOnPanel = false;

  bool operator==(const StripPlace&) const = default;
};

struct StripPosition {
  QRect geometry;
  StripPlace::Edge edge = StripPlace::Edge::Top;
  /// It stands on a panel, and keeps nothing free.
  bool isOnPanel = false;

  bool operator==(const StripPosition&) const = default;
};

/// Without a place of the user's: at the right end of the top edge of the primary
/// monitor, left of or below what stands there. At the top right corner where nothing
/// is free. Flatter than `size` on a flatter panel.
StripPosition stripPosition(const StripSurroundings& surroundings, const QSize& size,
                            const std::optional<StripPlace>& place);

/// What the user means who lets the strip go there: the nearest place at an edge or on a
/// panel. Nothing at the top right corner of the primary monitor, and where the strip
/// stands by default.
std::optional<StripPlace> placeOfDrop(const StripSurroundings& surroundings, const QRect& strip);

/// What it keeps free. Nothing on a panel, and where another monitor lies between the
/// strip and the edge of the X server's screen: it would be taken from that one.
Strut strutOf(const StripPosition& position, const std::vector<QRect>& monitors);

/// Whether what is kept free already serves: it reaches as far from the edge, and along it
/// over all that is wanted and little more. Window managers lay out the whole screen anew
/// for each change.
bool servesAs(const Strut& wanted, const Strut& kept);

}  // namespace vembrix
