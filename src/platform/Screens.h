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

/// The screens of the desktop. Main thread. Changes are told by
/// notification::kScreenParametersDidChange on the default center.
class Screens {
 public:
  static const Screens& shared();

  virtual ~Screens() = default;

  /// All screens, the primary one (whose bottom left corner is the origin)
  /// first. Empty where there is none, unless the last one has only gone for a time.
  /// Valid until the next event.
  [[nodiscard]] virtual const std::vector<Screen>& all() const = 0;

  /// The main screen, or null: the one with the focused window, and the primary one
  /// where the system has no such notion.
  [[nodiscard]] virtual const Screen* mainScreen() const = 0;
};

}  // namespace vembrix
