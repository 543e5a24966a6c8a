#include "platform/linux/ui/controls/LineLabel.h"

#include <QPainter>
#include <QTextLayout>
#include <cmath>

#include "platform/linux/TextMetrics.h"

namespace vembrix {

QSize LineLabel::sizeHint() const {
  return line().size;
}

int LineLabel::baseline() const {
  return line().baseline;
}

const LineLabel::Line& LineLabel::line() const {
  const bool isKnown = !line_.size.isEmpty() || line_.baseline > 0;
  if (isKnown && line_.text == text() && line_.font == font()) return line_;
  QTextLayout layout(text(), font());
  layout.beginLayout();
  const QTextLine only = layout.createLine();
  layout.endLayout();
  const double ascent = std::ceil(only.ascent());
  const double height = ascent + std::ceil(only.descent());
  line_ = {.text = text(),
           .font = font(),
           .size = QSizeF(std::ceil(only.naturalTextWidth()), height).toSize(),
           .baseline = static_cast<int>(ascent)};
  return line_;
}

void LineLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  drawLine(painter, QPoint(0, baseline()), text());
}

}  // namespace vembrix
