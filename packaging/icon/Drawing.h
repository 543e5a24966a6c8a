#pragma once

#include <cstdint>
#include <vector>

namespace icon {

/// sRGB components and alpha from 0 to 1, not premultiplied.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
};

/// RGBA pixels of 8 bits each, not premultiplied, from the top left corner.
struct Picture {
  int side = 0;
  std::vector<std::uint8_t> pixels;
};

/// Returns the icon in a square of that many pixels.
Picture draw(int side);

}  // namespace icon
