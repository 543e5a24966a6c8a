#pragma once

#include <string>
#include <vector>

#include "settings/CodableColor.h"

namespace vembrix {

/// The tints of labels by the recency of their Space.
struct HeatPalette {
  std::string name;
  /// The label's fill at heat 0.
  CodableColor cold;
  /// The label's fill at heat 1.
  CodableColor hot;
  /// The rim of a warm label, and the glow of a warm Space in the dropdown.
  CodableColor rim;

  bool operator==(const HeatPalette&) const = default;
};

/// The built-in heat palettes, in display order. The first is the default.
const std::vector<HeatPalette>& builtInHeatPalettes();

}  // namespace vembrix
