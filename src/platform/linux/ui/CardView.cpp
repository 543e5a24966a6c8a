#include "platform/linux/ui/CardView.h"

#include <QPainter>
#include <algorithm>

#include "platform/linux/NativeColor.h"
#include "platform/linux/ui/ColorFollower.h"

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
  painter.setRenderHint(QPainter::Antialiasing);
  const Appearance appearance = appearanceOf(palette());
  const QRectF whole = rect();
  if (card_.fill) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(nativeColor(*card_.fill, appearance));
    painter.drawRoundedRect(whole, card_.cornerRadius, card_.cornerRadius);
  }
  if (card_.stroke) {
    constexpr double kHalf = Card::strokeWidth / 2;
    painter.setPen(QPen(nativeColor(*card_.stroke, appearance), Card::strokeWidth));
    painter.setBrush(Qt::NoBrush);
    const double radius = std::max(card_.cornerRadius - kHalf, 0.0);
    painter.drawRoundedRect(whole.adjusted(kHalf, kHalf, -kHalf, -kHalf), radius, radius);
  }
}

void CardView::resizeEvent(QResizeEvent* /*event*/) {
  if (page_) page_->setGeometry(rect());
}

}  // namespace vembrix
