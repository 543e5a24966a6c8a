#include "platform/linux/ui/controls/CardView.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/linux/Conversions.h"
#include "platform/linux/ui/controls/ColorFollower.h"

namespace vembrix {

CardView::CardView(const Card& card, QWidget* parent) : QWidget(parent), card_(card) {}

void CardView::setPage(QWidget* page) {
  if (page_) {
    page_->hide();
    page_->deleteLater();
  }
  page_ = page;
  page_->setParent(this);
  page_->setGeometry(rect());
  page_->show();
}

void CardView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Appearance appearance = appearanceOf(palette());
  if (card_.fill) paintFill(painter, nativeColor(*card_.fill, appearance));
  if (card_.stroke) paintStroke(painter, nativeColor(*card_.stroke, appearance));
}

// Smooth edges cost time in proportion to the shape's area, so only the corners have them.

int CardView::cornerSize() const {
  const int largest = std::min(width(), height()) / 2;
  return std::min(static_cast<int>(std::ceil(card_.cornerRadius)), largest);
}

void CardView::paintFill(QPainter& painter, const QColor& color) const {
  const int corner = cornerSize();
  painter.fillRect(0, corner, width(), height() - 2 * corner, color);
  for (const int y : {0, height() - corner}) {
    painter.fillRect(corner, y, width() - 2 * corner, corner, color);
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  paintCorners(painter, 0);
}

void CardView::paintStroke(QPainter& painter, const QColor& color) const {
  constexpr auto kWidth = static_cast<int>(Card::strokeWidth);
  const int corner = cornerSize();
  for (const int y : {0, height() - kWidth}) {
    painter.fillRect(corner, y, width() - 2 * corner, kWidth, color);
  }
  for (const int x : {0, width() - kWidth}) {
    painter.fillRect(x, corner, kWidth, height() - 2 * corner, color);
  }
  painter.setPen(QPen(color, Card::strokeWidth));
  painter.setBrush(Qt::NoBrush);
  paintCorners(painter, Card::strokeWidth / 2);
}

void CardView::paintCorners(QPainter& painter, double inset) const {
  const int corner = cornerSize();
  const QSize square(corner, corner);
  const double radius = std::max(card_.cornerRadius - inset, 0.0);
  // A circle around each corner's centre, a quarter of which is visible in the corner.
  const double diameter = 2 * radius;
  painter.setRenderHint(QPainter::Antialiasing);
  for (const int x : {0, width() - corner}) {
    for (const int y : {0, height() - corner}) {
      const double left = x == 0 ? inset : width() - inset - diameter;
      const double top = y == 0 ? inset : height() - inset - diameter;
      painter.setClipRect(QRect(QPoint(x, y), square));
      painter.drawEllipse(QRectF(left, top, diameter, diameter));
    }
  }
  painter.setClipping(false);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void CardView::resizeEvent(QResizeEvent* /*event*/) {
  if (page_) page_->setGeometry(rect());
}

}  // namespace vembrix
