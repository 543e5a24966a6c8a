#pragma once

#include <QPoint>
#include <QRect>

#include "platform/Geometry.h"

class QScreen;

namespace vembrix {

// Between the pixels of the X server and the seam's points. Main thread; need a
// Qt application.

/// In pixels; Qt scales the extent of a screen, not its place.
QRect nativeGeometry(const QScreen& screen);
/// Of a window on that screen, as Qt counts, in pixels.
QRect nativeGeometry(const QRect& geometry, const QScreen& screen);

/// Between a window's place as Qt counts and in pixels. What is on no screen counts as on
/// the primary one.
QRect pixelsOfGeometry(const QRect& geometry);
QRect geometryOfPixels(const QRect& pixels);

/// The place of the pixel in global coordinates.
Point pointOfPixel(const QPoint& pixel);

/// Where Qt puts a window that is to fill the rectangle of global coordinates; its
/// edges lie between whole points.
QRect windowGeometry(const Rect& frame);

/// The size in points on the screen where the centre of the rectangle of pixels
/// is, and its top left corner, counted down from that of the primary screen.
Rect windowBoundsOfPixels(const QRect& pixels);

}  // namespace vembrix
