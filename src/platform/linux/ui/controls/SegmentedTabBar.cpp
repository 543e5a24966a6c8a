#include "platform/linux/ui/controls/SegmentedTabBar.h"

#include <QFontMetrics>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {
namespace {

constexpr int kLeastHeight = 24;
constexpr int kPadding = 12;
constexpr double kRadius = 6;

}  // namespace

SegmentedTabBar::SegmentedTabBar(QWidget* parent) : QTabBar(parent) {
  setStyle(&ControlStyle::shared());
  setFont(nativeFont({}));
  setDrawBase(false);
  setExpanding(false);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideNone);
  setFocusPolicy(Qt::TabFocus);
}

QRectF SegmentedTabBar::segment(int index) const {
  return QRectF(tabRect(index)).adjusted(1, 1, -1, -1);
}

int SegmentedTabBar::naturalHeight() const {
  return std::max(kLeastHeight, lineHeight(font()));
}

QSize SegmentedTabBar::tabSizeHint(int index) const {
  return {QFontMetrics(font()).horizontalAdvance(tabText(index)) + 2 * kPadding, naturalHeight()};
}

QSize SegmentedTabBar::minimumTabSizeHint(int index) const {
  return tabSizeHint(index);
}

void SegmentedTabBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool isDark = appearanceOf(palette()) == Appearance::Dark;
  painter.setPen(Qt::NoPen);
  // Covers the pane's edge, which runs behind it.
  painter.setBrush(palette().color(QPalette::Window));
  painter.drawRoundedRect(rect(), kRadius, kRadius);
  painter.setBrush(isDark ? QColor(255, 255, 255, 30) : QColor(0, 0, 0, 20));
  painter.drawRoundedRect(rect(), kRadius, kRadius);
  painter.setPen(QPen(isDark ? QColor(255, 255, 255, 28) : QColor(0, 0, 0, 28), 1));
  for (int i = 1; i < count(); ++i) {
    if (i == currentIndex() || i - 1 == currentIndex()) continue;
    const double x = tabRect(i).left() + 0.5;
    painter.drawLine(QPointF(x, 5), QPointF(x, height() - 5));
  }
  painter.setPen(Qt::NoPen);
  if (!isDark) {
    painter.setBrush(QColor(0, 0, 0, 36));
    painter.drawRoundedRect(segment(currentIndex()).adjusted(-0.5, 0, 0.5, 1), kRadius - 0.5,
                            kRadius - 0.5);
  }
  painter.setBrush(isDark ? QColor(255, 255, 255, 36) : QColor(255, 255, 255));
  painter.drawRoundedRect(segment(currentIndex()), kRadius - 1, kRadius - 1);
  painter.setPen(palette().color(QPalette::WindowText));
  for (int i = 0; i < count(); ++i) {
    paintLine(painter, tabRect(i), tabText(i), TextPlace::Center);
  }
}

void SegmentedTabBar::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace vembrix
