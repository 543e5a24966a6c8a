#pragma once

#include <string>
#include <vector>

#include "settings/CodableColor.h"

namespace vembrix {

/// A named list of colours, assigned to Spaces in turn.
struct ColorPalette {
  std::string name;
  std::vector<CodableColor> colors;

  bool operator==(const ColorPalette&) const = default;
};

/// The built-in palettes, of 16 opaque colours each, in display order.
const std::vector<ColorPalette>& builtInColorPalettes();

}  // namespace vembrix
