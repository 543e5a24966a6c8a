#pragma once

#include <string>
#include <vector>

#include "settings/CodableColor.h"

namespace vembrix {

/// A named list of colours that Spaces take in turn.
struct ColorPalette {
  std::string name;
  std::vector<CodableColor> colors;

  bool operator==(const ColorPalette&) const = default;
};

/// The built-in palettes, of 16 opaque colours each, in the order in which they
/// are offered.
const std::vector<ColorPalette>& builtInColorPalettes();

}  // namespace vembrix
