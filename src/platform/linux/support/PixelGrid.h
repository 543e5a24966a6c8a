#pragma once

#include <QPainter>
#include <QRectF>
#include <algorithm>
#include <cmath>

namespace vembrix {

// The pixels of a painter's device, in points. At fractional scales a point is not a whole number
// of pixels, and edges between pixels are blurred.

/// Returns the width of one pixel.
inline double hairline(const QPainter& painter) {
  return 1 / std::max(1.0, painter.device()->devicePixelRatioF());
}

/// Returns the width of a line of one point, rounded to whole pixels.
inline double pointLine(const QPainter& painter) {
  return std::max(1.0, std::floor(painter.device()->devicePixelRatioF())) * hairline(painter);
}

/// Returns the rectangle with its edges moved to the nearest edges of pixels.
inline QRectF onPixels(const QPainter& painter, const QRectF& rect) {
  const QTransform transform = painter.deviceTransform();
  const QRectF pixels = transform.mapRect(rect);
  const QPointF topLeft(std::round(pixels.left()), std::round(pixels.top()));
  const QPointF bottomRight(std::round(pixels.right()), std::round(pixels.bottom()));
  return transform.inverted().mapRect(QRectF(topLeft, bottomRight));
}

}  // namespace vembrix
