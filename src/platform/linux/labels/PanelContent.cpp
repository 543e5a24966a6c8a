#include "platform/linux/labels/PanelContent.h"

#include <QPainter>
#include <QPainterPath>

namespace vembrix {

void fillPanel(QPainter& painter, const QRectF& panel, double cornerRadius, QColor fill,
               Backing backing) {
  if (backing == Backing::Opaque) {
    fill.setAlphaF(1);
    painter.fillRect(panel, fill);
    return;
  }
  QPainterPath shape;
  shape.addRoundedRect(panel, cornerRadius, cornerRadius);
  painter.fillPath(shape, fill);
}

}  // namespace vembrix
