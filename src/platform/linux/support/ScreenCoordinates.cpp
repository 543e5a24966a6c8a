#include "platform/linux/support/ScreenCoordinates.h"

#include <QGuiApplication>
#include <QList>
#include <QPointF>
#include <QScreen>
#include <algorithm>

namespace vembrix {
namespace {

/// Returns the screen of a pixel; the primary one for a place between the screens; null if there is
/// no screen.
const QScreen* screenOfPixel(const QPoint& pixel) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  const auto found = std::find_if(screens.begin(), screens.end(), [&](const QScreen* screen) {
    return nativeGeometry(*screen).contains(pixel);
  });
  if (found != screens.end()) return *found;
  return screens.isEmpty() ? nullptr : screens.constFirst();
}

/// Returns the pixel's position in points, counted down from the top left corner of the primary
/// screen.
QPointF place(const QPoint& pixel, const QScreen& screen) {
  const QPoint origin = screen.geometry().topLeft();
  const QPoint primary = QGuiApplication::primaryScreen()->geometry().topLeft();
  return QPointF(pixel - origin) / screen.devicePixelRatio() + (origin - primary);
}

}  // namespace

QRect nativeGeometry(const QScreen& screen) {
  return {screen.geometry().topLeft(), screen.size() * screen.devicePixelRatio()};
}

QRect nativeGeometry(const QRect& geometry, const QScreen& screen) {
  const QPoint origin = screen.geometry().topLeft();
  const QPoint offset = (geometry.topLeft() - origin) * screen.devicePixelRatio();
  return {origin + offset, geometry.size() * screen.devicePixelRatio()};
}

QRect pixelsOfGeometry(const QRect& geometry) {
  const QScreen* screen = QGuiApplication::screenAt(geometry.center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  return screen ? nativeGeometry(geometry, *screen) : geometry;
}

QRect geometryOfPixels(const QRect& pixels) {
  const QScreen* screen = screenOfPixel(pixels.center());
  if (!screen) return pixels;
  const QPoint origin = screen->geometry().topLeft();
  const double scale = screen->devicePixelRatio();
  return {origin + (pixels.topLeft() - origin) / scale, pixels.size() / scale};
}

Point pointOfPixel(const QPoint& pixel) {
  const QScreen* screen = screenOfPixel(pixel);
  if (!screen) return {};
  const QPointF fromTop = place(pixel, *screen);
  return {fromTop.x(), QGuiApplication::primaryScreen()->geometry().height() - fromTop.y()};
}

QRect windowGeometry(const Rect& frame) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (!screen) return {};
  const QRect primary = screen->geometry();
  const QPointF origin(primary.x(), primary.y() + primary.height());
  const QPointF topLeft = origin + QPointF(frame.x, -frame.y - frame.height);
  const QPointF bottomRight = origin + QPointF(frame.x + frame.width, -frame.y);
  // Rounds each edge by itself, so that rectangles that touch still do so afterwards.
  const QPoint first = topLeft.toPoint();
  const QPoint end = bottomRight.toPoint();
  return {first, QSize(end.x() - first.x(), end.y() - first.y())};
}

Rect windowBoundsOfPixels(const QRect& pixels) {
  const QScreen* screen = screenOfPixel(pixels.center());
  if (!screen) return {};
  const QPointF corner = place(pixels.topLeft(), *screen);
  const double scale = screen->devicePixelRatio();
  return {corner.x(), corner.y(), pixels.width() / scale, pixels.height() / scale};
}

}  // namespace vembrix
