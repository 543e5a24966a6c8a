#pragma once

#include <cstdint>
#include <vector>

namespace icon {

/// Straight sRGB components and alpha, 0 to 1.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
};

/// Straight RGBA, 8 bits each, from the top left corner.
struct Picture {
  int side = 0;
  std::vector<std::uint8_t> pixels;
};

/// The icon in a square of that many pixels.
Picture draw(int side);

}  // namespace icon
