#include "platform/linux/ui/controls/ControlPainting.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainterPath>
#include <cmath>

#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/support/PixelGrid.h"

namespace vembrix {
namespace {

using namespace control_metrics;

QColor white(double alpha) {
  return QColor::fromRgbF(1, 1, 1, static_cast<float>(alpha));
}
QColor black(double alpha) {
  return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

bool isDark(const ControlState& state) {
  return state.appearance == Appearance::Dark;
}

/// Returns the colour for the control's state; disabled controls are more transparent.
QColor faded(QColor color, const ControlState& state) {
  if (!state.isEnabled) color.setAlphaF(color.alphaF() * 0.5F);
  return color;
}

QColor accentOf(const ControlState& state) {
  const QColor accent = nativeColor(Color(SystemColor::ControlAccent), state.appearance);
  if (!state.isPressed) return accent;
  return isDark(state) ? accent.lighter(115) : accent.darker(115);
}

void fill(QPainter& painter, const QRectF& rect, double radius, const QBrush& brush) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(brush);
  painter.drawRoundedRect(rect, radius, radius);
}

/// Draws a line inside the edge of the shape.
void stroke(QPainter& painter, const QRectF& shape, double radius, const QColor& color) {
  const QRectF rect = onPixels(painter, shape);
  const double width = hairline(painter);
  const double inset = width / 2;
  painter.setPen(QPen(color, width));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset,
                          radius - inset);
}

QColor controlFill(const ControlState& state) {
  if (isDark(state)) return white(state.isPressed ? 0.3 : 0.2);
  return state.isPressed ? QColor(238, 238, 238) : QColor(255, 255, 255);
}

/// Paints the rim and the small shadow below that make a control appear raised.
void paintRim(QPainter& painter, const QRectF& rect, double radius, const ControlState& state) {
  if (isDark(state)) {
    stroke(painter, rect, radius, white(0.07));
    return;
  }
  stroke(painter, rect, radius, black(0.13));
  painter.setPen(QPen(black(0.12), hairline(painter)));
  const double y = onPixels(painter, rect).bottom() - hairline(painter) / 2;
  painter.drawLine(QPointF(rect.left() + radius, y), QPointF(rect.right() - radius, y));
}

void paintChevron(QPainter& painter, QPointF tip, double direction) {
  QPainterPath path(tip + QPointF(-2.75, direction * 2.75));
  path.lineTo(tip);
  path.lineTo(tip + QPointF(2.75, direction * 2.75));
  painter.drawPath(path);
}

QPen roundPen(const QColor& color, double width) {
  return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

}  // namespace

void paintButtonGround(QPainter& painter, const QRectF& rect, const ControlState& state) {
  fill(painter, rect, kButtonRadius, faded(controlFill(state), state));
  paintRim(painter, rect, kButtonRadius, state);
}

void paintChevrons(QPainter& painter, const QRectF& button, const ControlState& state) {
  const QRectF square(button.right() - kChevronInset - kChevronSquare,
                      button.center().y() - kChevronSquare / 2, kChevronSquare, kChevronSquare);
  fill(painter, square, kButtonRadius - 1.5, faded(accentOf(state), state));
  painter.setPen(roundPen(faded(white(1), state), 1.6));
  painter.setBrush(Qt::NoBrush);
  paintChevron(painter, square.center() - QPointF(0, 4.75), 1);
  paintChevron(painter, square.center() + QPointF(0, 4.75), -1);
}

void paintCheckbox(QPainter& painter, const QRectF& box, bool isOn, const ControlState& state) {
  if (!isOn) {
    const QColor ground = isDark(state) ? white(state.isPressed ? 0.25 : 0.13) : controlFill(state);
    fill(painter, box, kCheckboxRadius, faded(ground, state));
    stroke(painter, box, kCheckboxRadius, isDark(state) ? white(0.2) : black(0.25));
    return;
  }
  fill(painter, box, kCheckboxRadius, faded(accentOf(state), state));
  painter.setPen(roundPen(faded(white(1), state), 1.9));
  painter.setBrush(Qt::NoBrush);
  QPainterPath tick(box.topLeft() + QPointF(3.6, 7.4));
  tick.lineTo(box.topLeft() + QPointF(6.0, 10.1));
  tick.lineTo(box.topLeft() + QPointF(10.3, 3.9));
  painter.drawPath(tick);
}

void paintSlider(QPainter& painter, const QRectF& slider, const QRectF& knob,
                 const ControlState& state) {
  const double radius = kTrackHeight / 2;
  const QRectF track(slider.left() + 1, knob.center().y() - radius, slider.width() - 2,
                     kTrackHeight);
  fill(painter, track, radius, isDark(state) ? white(0.16) : black(0.12));
  QRectF before = track;
  before.setRight(knob.center().x());
  ControlState resting = state;
  resting.isPressed = false;
  fill(painter, before, radius, faded(accentOf(resting), state));
  // The shadow consists of two faint rings.
  fill(painter, knob.adjusted(-0.5, 0, 0.5, 1), knob.width() / 2 + 0.5, black(0.08));
  fill(painter, knob.adjusted(0, 0.5, 0, 0.5), knob.width() / 2, black(0.1));
  const QRectF face = knob.adjusted(0.5, 0.5, -0.5, -0.5);
  const int shade = isDark(state) ? (state.isPressed ? 225 : 204) : (state.isPressed ? 240 : 255);
  fill(painter, face, face.width() / 2, QColor(shade, shade, shade));
  stroke(painter, face, face.width() / 2, black(0.16));
}

void paintStepper(QPainter& painter, const QRectF& rect, const QColor& color) {
  painter.setPen(roundPen(color, 1.2));
  painter.setBrush(Qt::NoBrush);
  paintChevron(painter, rect.center() - QPointF(0, 4.75), 1);
  paintChevron(painter, rect.center() + QPointF(0, 4.75), -1);
}

void paintField(QPainter& painter, const QRectF& rect, const ControlState& state) {
  fill(painter, rect, kFieldRadius, isDark(state) ? white(0.08) : white(1));
  stroke(painter, rect, kFieldRadius, isDark(state) ? white(0.16) : black(0.16));
}

void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, Appearance appearance) {
  QColor ring = nativeColor(Color(SystemColor::ControlAccent), appearance);
  ring.setAlphaF(appearance == Appearance::Dark ? 0.7F : 0.55F);
  const double half = kFocusRingWidth / 2;
  painter.setPen(QPen(ring, kFocusRingWidth));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(rect.adjusted(-half, -half, half, half), radius + half, radius + half);
}

void paintScroller(QPainter& painter, const QRectF& knob, const ControlState& state) {
  const QRectF bar = knob.adjusted(2, 2, -2, -2);
  const double alpha = state.isPressed ? 0.6 : 0.4;
  fill(painter, bar, bar.width() / 2, isDark(state) ? white(alpha) : black(alpha));
}

void paintMenuTick(QPainter& painter, const QRectF& rect, const QColor& color) {
  painter.setPen(roundPen(color, 1.7));
  painter.setBrush(Qt::NoBrush);
  const QPointF middle = rect.center();
  QPainterPath tick(middle + QPointF(-3.6, 0.6));
  tick.lineTo(middle + QPointF(-1.2, 3.4));
  tick.lineTo(middle + QPointF(3.6, -3.6));
  painter.drawPath(tick);
}

int centeredBaseline(const QFont& font, int height) {
  return static_cast<int>(middleBaseline(font, height, 1));
}

void paintLine(QPainter& painter, const QRect& rect, const QString& text, TextPlace place) {
  const QFontMetricsF metrics(painter.font());
  const QString shown = metrics.elidedText(text, Qt::ElideRight, rect.width());
  const double free = rect.width() - metrics.horizontalAdvance(shown);
  double x = rect.left();
  if (place == TextPlace::Center) {
    x += free / 2;
  } else if (shown.isRightToLeft()) {
    x += free;
  }
  drawLine(painter, {x, double(rect.top() + centeredBaseline(painter.font(), rect.height()))},
           shown);
}

}  // namespace vembrix
