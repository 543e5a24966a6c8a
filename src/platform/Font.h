#pragma once

#include <optional>

namespace vembrix {

/// One of the system's fonts for its interface.
struct Font {
  enum class Design { System, Monospaced };
  enum class Weight { Regular, Semibold, Heavy };

  Design design = Design::System;
  Weight weight = Weight::Regular;
  /// In points; empty for the system's size for menus and controls.
  std::optional<double> size;

  bool operator==(const Font&) const = default;
};

}  // namespace vembrix
