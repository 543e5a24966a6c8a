#pragma once

namespace vembrix {

// Points (not pixels), origin at the bottom left, y upwards. Global coordinates
// are relative to the bottom left corner of the primary screen.

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  bool operator==(const Rect&) const = default;
};

/// Returns whether the point is inside; the left and bottom edges belong to the rectangle.
constexpr bool contains(const Rect& rect, const Point& point) {
  return point.x >= rect.x && point.x < rect.x + rect.width && point.y >= rect.y &&
         point.y < rect.y + rect.height;
}

/// Returns a rectangle of that size, centred in `rect`.
constexpr Rect centered(const Size& size, const Rect& rect) {
  return {rect.x + rect.width / 2 - size.width / 2, rect.y + rect.height / 2 - size.height / 2,
          size.width, size.height};
}

}  // namespace vembrix
