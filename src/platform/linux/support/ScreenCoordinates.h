#pragma once

#include <QPoint>
#include <QRect>

#include "platform/Geometry.h"

class QScreen;

namespace vembrix {

// Converts between the X server's pixels and the seam's points. Main thread; needs a Qt
// application.

/// Returns a screen's geometry in pixels; Qt scales the size of a screen, not its position.
QRect nativeGeometry(const QScreen& screen);
/// Converts a window's geometry on that screen from Qt's units to pixels.
QRect nativeGeometry(const QRect& geometry, const QScreen& screen);

/// Convert a window's geometry between Qt's units and pixels. A window on no screen counts as on
/// the primary one.
QRect pixelsOfGeometry(const QRect& geometry);
QRect geometryOfPixels(const QRect& pixels);

/// Returns the pixel's position in global coordinates.
Point pointOfPixel(const QPoint& pixel);

/// Returns Qt's geometry of a window that fills a rectangle of global coordinates, rounded to whole
/// points.
QRect windowGeometry(const Rect& frame);

/// Converts a rectangle of pixels to points of the screen that holds its centre; the origin is its
/// top left corner, counted down from that of the primary screen.
Rect windowBoundsOfPixels(const QRect& pixels);

}  // namespace vembrix
