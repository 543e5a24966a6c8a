#include "platform/linux/menubar/MenuPainting.h"

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRectF>

#include "platform/linux/session/Compositor.h"
#include "platform/linux/support/PixelGrid.h"

namespace vembrix {
namespace {

constexpr int kHighlightRadius = 4;
/// The opacity of the edge, as a share of the text's.
constexpr float kEdgeShare = 0.22F;

/// Returns the result of painting a translucent colour over an opaque one.
QColor over(const QColor& color, const QColor& ground) {
  const float share = color.alphaF();
  const auto mix = [share](float top, float bottom) { return top * share + bottom * (1 - share); };
  return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                          mix(color.blueF(), ground.blueF()));
}

}  // namespace

void paintMenuPanel(QPainter& painter, const QRect& rect, const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Window);
  QColor edge = palette.color(QPalette::WindowText);
  edge.setAlphaF(edge.alphaF() * kEdgeShare);
  painter.save();
  if (!Compositor::shared().isRunning()) {
    edge = over(edge, ground);
    painter.fillRect(rect, edge);
  }
  painter.setRenderHint(QPainter::Antialiasing);
  const double width = pointLine(painter);
  const double inset = width / 2;
  painter.setPen(QPen(edge, width));
  painter.setBrush(ground);
  painter.drawRoundedRect(onPixels(painter, rect).adjusted(inset, inset, -inset, -inset),
                          kMenuCornerRadius, kMenuCornerRadius);
  painter.restore();
}

void paintMenuHighlight(QPainter& painter, const QRect& item, int inset, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(QRectF(item).adjusted(inset, 0, -inset, 0), kHighlightRadius,
                          kHighlightRadius);
}

}  // namespace vembrix
