#include "platform/linux/ui/LineLabel.h"

#include <QFontMetrics>
#include <QPainter>

namespace vembrix {

int LineLabel::baseline() const {
  return QFontMetrics(font()).ascent();
}

void LineLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(QPoint(0, baseline()), text());
}

}  // namespace vembrix
