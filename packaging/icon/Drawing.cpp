#include "Drawing.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace icon {
namespace {

// The icon is drawn on a square of 1024 units, from the top left; its body has the usual size of
// icons on macOS. Everything is a rounded rectangle: four desktops, the warmest of which has a
// label.

struct RoundedRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  double radius = 0;
};

constexpr double kUnits = 1024;
constexpr RoundedRect kBody{100, 100, 824, 824, 188};

/// Returns the distance from the edge; negative inside.
double distance(const RoundedRect& rect, double x, double y) {
  const double dx = std::abs(x - rect.x - rect.width / 2) - rect.width / 2 + rect.radius;
  const double dy = std::abs(y - rect.y - rect.height / 2) - rect.height / 2 + rect.radius;
  const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
  return outside + std::min(std::max(dx, dy), 0.0) - rect.radius;
}

Color mixed(const Color& a, const Color& b, double t) {
  return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t,
          a.blue + (b.blue - a.blue) * t, a.alpha + (b.alpha - a.alpha) * t};
}

/// A pixel that is composed from the back to the front.
class Pixel {
 public:
  /// `unit` is the size of a pixel.
  Pixel(double x, double y, double unit) : x_(x), y_(y), unit_(unit) {}

  void fill(const RoundedRect& rect, const Color& color) { over(color, coverage(rect)); }

  /// Fills the rectangle with a gradient from its top to its bottom.
  void fill(const RoundedRect& rect, const Color& top, const Color& bottom) {
    const double t = std::clamp((y_ - rect.y) / rect.height, 0.0, 1.0);
    over(mixed(top, bottom, t), coverage(rect));
  }

  /// Draws a line along the inside of the edge.
  void rim(const RoundedRect& rect, double width, const Color& color) {
    const RoundedRect inner{rect.x + width, rect.y + width, rect.width - 2 * width,
                            rect.height - 2 * width, rect.radius - width};
    over(color, coverage(rect) - coverage(inner));
  }

  void shadow(const RoundedRect& rect, double blur, const Color& color) {
    const double t = std::clamp((distance(rect, x_, y_) + blur) / (2 * blur), 0.0, 1.0);
    over(color, 1 - t * t * (3 - 2 * t));
  }

  [[nodiscard]] std::array<std::uint8_t, 4> bytes() const {
    const auto byte = [](double value) {
      return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    return {byte(color_.red), byte(color_.green), byte(color_.blue), byte(color_.alpha)};
  }

 private:
  [[nodiscard]] double coverage(const RoundedRect& rect) const {
    return std::clamp(0.5 - distance(rect, x_, y_) / unit_, 0.0, 1.0);
  }

  void over(const Color& color, double coverage) {
    const double front = color.alpha * coverage;
    if (front <= 0) return;
    const double alpha = front + color_.alpha * (1 - front);
    const auto composed = [&](double above, double below) {
      return (above * front + below * color_.alpha * (1 - front)) / alpha;
    };
    color_ = {composed(color.red, color_.red), composed(color.green, color_.green),
              composed(color.blue, color_.blue), alpha};
  }

  double x_;
  double y_;
  double unit_;
  Color color_{0, 0, 0, 0};
};

struct Desktop {
  RoundedRect rect;
  Color top;
  Color bottom;
  /// The heat of its rim; 0 for the cold ones.
  double heat = 0;
};

constexpr double kDesktopWidth = 304;
constexpr double kDesktopHeight = 236;
constexpr double kGap = 44;
constexpr double kLeft = (kUnits - 2 * kDesktopWidth - kGap) / 2;
constexpr double kTop = (kUnits - 2 * kDesktopHeight - kGap) / 2;

constexpr RoundedRect desktopAt(int column, int row) {
  return {kLeft + column * (kDesktopWidth + kGap), kTop + row * (kDesktopHeight + kGap),
          kDesktopWidth, kDesktopHeight, 50};
}

/// The desktops from the most to the least recently used.
const std::array<Desktop, 4> kDesktops = {{
    {desktopAt(0, 0), {1.0, 0.54, 0.27}, {0.88, 0.24, 0.09}, 1},
    {desktopAt(1, 0), {0.79, 0.38, 0.24}, {0.62, 0.22, 0.14}, 0.6},
    {desktopAt(0, 1), {0.42, 0.30, 0.36}, {0.33, 0.21, 0.28}, 0},
    {desktopAt(1, 1), {0.29, 0.32, 0.45}, {0.22, 0.25, 0.37}, 0},
}};

void drawDesktop(Pixel& pixel, const Desktop& desktop) {
  const RoundedRect& rect = desktop.rect;
  pixel.shadow({rect.x, rect.y + 10, rect.width, rect.height, rect.radius}, 22, {0, 0, 0, 0.35});
  pixel.fill(rect, desktop.top, desktop.bottom);
  if (desktop.heat > 0) pixel.rim(rect, 9, {1.0, 0.76, 0.42, 0.9 * desktop.heat});
}

/// Draws a name on a desktop: a line of text seen from far away.
void drawName(Pixel& pixel, const RoundedRect& desktop, double width, double alpha) {
  constexpr double kHeight = 50;
  pixel.fill({desktop.x + (desktop.width - width) / 2, desktop.y + (desktop.height - kHeight) / 2,
              width, kHeight, kHeight / 2},
             {1, 1, 1, alpha});
}

std::array<std::uint8_t, 4> pixelAt(double x, double y, double unit) {
  Pixel pixel(x, y, unit);
  pixel.shadow({kBody.x, kBody.y + 12, kBody.width, kBody.height, kBody.radius}, 26,
               {0, 0, 0, 0.32});
  pixel.fill(kBody, {0.19, 0.23, 0.38}, {0.07, 0.09, 0.17});
  pixel.rim(kBody, 4, {1, 1, 1, 0.10});
  for (const Desktop& desktop : kDesktops) drawDesktop(pixel, desktop);
  drawName(pixel, kDesktops[0].rect, 188, 1);
  drawName(pixel, kDesktops[1].rect, 150, 0.55);
  drawName(pixel, kDesktops[2].rect, 168, 0.32);
  drawName(pixel, kDesktops[3].rect, 130, 0.32);
  return pixel.bytes();
}

}  // namespace

Picture draw(int side) {
  Picture picture{side, {}};
  picture.pixels.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4);
  const double unit = kUnits / side;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const auto bytes = pixelAt((column + 0.5) * unit, (row + 0.5) * unit, unit);
      picture.pixels.insert(picture.pixels.end(), bytes.begin(), bytes.end());
    }
  }
  return picture;
}

}  // namespace icon
