#include "platform/linux/ui/controls/PillTabButton.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {
namespace {

using namespace tab_button_metrics;

/// The padding of a button without a border, both sides together.
constexpr int kPlainButtonPadding = 4;
constexpr double kLeastRingRadius = 4;

}  // namespace

PillTabButton::PillTabButton(const TabButton& look, std::optional<double> width, QWidget* parent)
    : QPushButton(parent), width_(width) {
  setStyle(&ControlStyle::shared());
  setFocusPolicy(Qt::TabFocus);
  setLook(look);
}

void PillTabButton::setLook(const TabButton& look) {
  const bool wasSelected = look_.isSelected;
  look_ = look;
  setFont(nativeFont(look_.style.font));
  setAccessibleName(QString::fromStdString(look_.text));
  updateGeometry();
  update();
  if (wasSelected == look_.isSelected) return;
  QAccessible::State changed;
  changed.selected = true;
  QAccessibleStateChangeEvent event(this, changed);
  QAccessible::updateAccessibility(&event);
}

double PillTabButton::ringRadius() const {
  return std::max(look_.cornerRadius, kLeastRingRadius);
}

QSize PillTabButton::sizeHint() const {
  const int width = width_ ? static_cast<int>(std::lround(*width_)) : ownWidth();
  return {width, std::max(static_cast<int>(kHeight), lineHeight(font()))};
}

int PillTabButton::ownWidth() const {
  const QFontMetricsF metrics(font());
  const double text = std::ceil(metrics.horizontalAdvance(accessibleName()));
  return static_cast<int>(text) + kPlainButtonPadding + static_cast<int>(kExtraWidth);
}

void PillTabButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Appearance appearance = appearanceOf(palette());
  if (look_.background) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(nativeColor(*look_.background, appearance));
    painter.drawRoundedRect(rect(), look_.cornerRadius, look_.cornerRadius);
  }
  if (look_.underline) {
    const QRectF line(kUnderlineInset, height() - kUnderlineBottom - kUnderlineHeight,
                      ownWidth() - 2 * kUnderlineInset, kUnderlineHeight);
    painter.fillRect(line, nativeColor(*look_.underline, appearance));
  }
  painter.setOpacity(isDown() ? 0.6 : 1);
  painter.setPen(nativeColor(look_.style.color, appearance));
  const bool isLeading = look_.alignment == TabButton::Alignment::Leading;
  const int indent = isLeading ? static_cast<int>(std::lround(look_.indent)) : 0;
  paintLine(painter, rect().adjusted(indent, 0, 0, 0), accessibleName(),
            isLeading ? TextPlace::Leading : TextPlace::Center);
}

}  // namespace vembrix
