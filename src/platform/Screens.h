#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace vembrix {

struct Screen {
  /// Points, global coordinates.
  Rect frame;
  /// The part that bars and docks leave free.
  Rect visibleFrame;
  /// Pixels per point.
  double scale = 1;

  bool operator==(const Screen&) const = default;
};

/// The screens of the desktop. Main thread. notification::kScreenParametersDidChange on the default
/// center reports changes.
class Screens {
 public:
  static const Screens& shared();

  virtual ~Screens() = default;

  /// Returns all screens, first the primary one, whose bottom left corner is the origin. Keeps the
  /// last known screens while the system has none for a moment, else empty. Valid until the next
  /// event.
  [[nodiscard]] virtual const std::vector<Screen>& all() const = 0;

  /// Returns the screen with the focused window, or the primary one where the system does not
  /// report that; null without screens.
  [[nodiscard]] virtual const Screen* mainScreen() const = 0;
};

}  // namespace vembrix
