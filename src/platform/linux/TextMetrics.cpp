#include "platform/linux/TextMetrics.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace vembrix {

int lineHeight(const QFont& font) {
  return lineBaseline(font) + static_cast<int>(std::ceil(QFontMetricsF(font).descent()));
}

int lineBaseline(const QFont& font) {
  return static_cast<int>(std::ceil(QFontMetricsF(font).ascent()));
}

double middleBaseline(const QFont& font, double height, double scale) {
  return std::round((height + QFontMetricsF(font).capHeight()) / 2 * scale) / scale;
}

void drawLine(QPainter& painter, const QPointF& start, const QString& text) {
  const Qt::LayoutDirection before = painter.layoutDirection();
  painter.setLayoutDirection(Qt::LayoutDirectionAuto);
  painter.drawText(start, text);
  painter.setLayoutDirection(before);
}

}  // namespace vembrix
