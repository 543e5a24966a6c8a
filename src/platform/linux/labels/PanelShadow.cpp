#include "platform/linux/labels/PanelShadow.h"

#include <QImage>
#include <QPaintDevice>
#include <QPainter>
#include <QRect>
#include <algorithm>
#include <cmath>
#include <vector>

namespace vembrix {
namespace {

constexpr double kSoftness = 8;
constexpr double kDrop = 6;
constexpr double kDarkness = 0.4;

/// Returns the distance from the edge of a rectangle with round corners, centred at the origin;
/// negative inside.
double distance(double x, double y, double halfWidth, double halfHeight, double radius) {
  const double dx = std::abs(x) - halfWidth + radius;
  const double dy = std::abs(y) - halfHeight + radius;
  return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) -
         radius;
}

struct Template {
  double radius = 0;
  double scale = 0;
  /// The shadow of a panel that consists of its corners alone.
  QImage image;
};

QImage paintTemplate(double radius, double scale) {
  const double halfPanel = radius + 2 * kPanelShadowExtent;
  const int side = static_cast<int>(std::ceil(2 * (halfPanel + kPanelShadowExtent) * scale));
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  for (int row = 0; row < side; ++row) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
    const double y = (row + 0.5 - side / 2.0) / scale;
    for (int column = 0; column < side; ++column) {
      const double x = (column + 0.5 - side / 2.0) / scale;
      const double depth = distance(x, y - kDrop, halfPanel, halfPanel, radius);
      const double shadow = kDarkness * std::erfc(depth / (kSoftness * std::sqrt(2.0))) / 2;
      // The share of the pixel that the panel does not cover.
      const double free =
          std::clamp(distance(x, y, halfPanel, halfPanel, radius) * scale + 0.5, 0.0, 1.0);
      line[column] = qRgba(0, 0, 0, static_cast<int>(std::lround(255 * shadow * free)));
    }
  }
  return image;
}

const QImage& templateFor(double radius, double scale) {
  // There are as many as kinds of panels.
  static std::vector<Template> templates;
  const auto found = std::find_if(templates.begin(), templates.end(), [&](const Template& other) {
    return other.radius == radius && other.scale == scale;
  });
  if (found != templates.end()) return found->image;
  templates.push_back({radius, scale, paintTemplate(radius, scale)});
  return templates.back().image;
}

}  // namespace

void paintPanelShadow(QPainter& painter, const QRectF& panel, double cornerRadius) {
  const double scale = painter.device()->devicePixelRatioF();
  const QImage& image = templateFor(cornerRadius, scale);
  const double extent = kPanelShadowExtent;
  const QRectF outer = panel.adjusted(-extent, -extent, extent, extent);
  // Copies the corners and stretches the edges between them; the middle stays empty.
  const double corner =
      std::min({cornerRadius + 2 * extent, outer.width() / 2, outer.height() / 2});
  const double side = image.width() / scale;
  const auto from = [&](double x, double y, double width, double height) {
    return QRectF(x * scale, y * scale, width * scale, height * scale);
  };
  const double right = outer.right() - corner;
  const double bottom = outer.bottom() - corner;
  const double far = side - corner;
  painter.drawImage(QRectF(outer.x(), outer.y(), corner, corner), image,
                    from(0, 0, corner, corner));
  painter.drawImage(QRectF(right, outer.y(), corner, corner), image, from(far, 0, corner, corner));
  painter.drawImage(QRectF(outer.x(), bottom, corner, corner), image, from(0, far, corner, corner));
  painter.drawImage(QRectF(right, bottom, corner, corner), image, from(far, far, corner, corner));
  const double middle = side / 2;
  const double width = outer.width() - 2 * corner;
  const double height = outer.height() - 2 * corner;
  if (width > 0) {
    painter.drawImage(QRectF(outer.x() + corner, outer.y(), width, extent), image,
                      from(middle, 0, 1, extent));
    painter.drawImage(QRectF(outer.x() + corner, panel.bottom(), width, extent), image,
                      from(middle, side - extent, 1, extent));
  }
  if (height > 0) {
    painter.drawImage(QRectF(outer.x(), outer.y() + corner, extent, height), image,
                      from(0, middle, extent, 1));
    painter.drawImage(QRectF(panel.right(), outer.y() + corner, extent, height), image,
                      from(side - extent, middle, extent, 1));
  }
}

}  // namespace vembrix
