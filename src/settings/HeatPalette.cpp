#include "settings/HeatPalette.h"

namespace vembrix {

const std::vector<HeatPalette>& builtInHeatPalettes() {
  static const std::vector<HeatPalette> palettes = {
      {"Ember", {0.0, 0.0, 0.0, 0.78}, {0.84, 0.19, 0.05, 0.88}, {1.0, 0.64, 0.24, 1.0}},
      {"Ice", {0.02, 0.04, 0.1, 0.78}, {0.05, 0.36, 0.78, 0.88}, {0.36, 0.9, 1.0, 1.0}},
      {"Violet", {0.05, 0.01, 0.09, 0.78}, {0.52, 0.09, 0.7, 0.88}, {1.0, 0.35, 0.85, 1.0}},
      {"Mono", {0.0, 0.0, 0.0, 0.78}, {0.93, 0.93, 0.93, 0.92}, {1.0, 1.0, 1.0, 1.0}},
  };
  return palettes;
}

}  // namespace vembrix
