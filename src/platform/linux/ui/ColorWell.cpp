#include "platform/linux/ui/ColorWell.h"

#include <QPainter>
#include <QPainterPath>
#include <utility>

#include "platform/SettingsForm.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/ui/ColorDialog.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {
namespace {

/// The width of the frame around the colour.
constexpr double kFrame = 3;
constexpr double kRadius = 3;

Color colorOf(const QColor& native) {
  const QColor rgb = native.toRgb();
  return Srgb{rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()};
}

/// Paints what shows through a translucent colour: one half light, the other dark.
void paintBehindTranslucent(QPainter& painter, const QRectF& rect) {
  painter.fillRect(rect, Qt::white);
  QPainterPath half(rect.topRight());
  half.lineTo(rect.bottomRight());
  half.lineTo(rect.bottomLeft());
  painter.fillPath(half, Qt::black);
}

}  // namespace

ColorWell::ColorWell(const QString& name, const Color& color,
                     std::function<void(const Color&)> changed, QWidget* parent)
    : QPushButton(parent), color_(color), changed_(std::move(changed)) {
  setStyle(&ControlStyle::shared());
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(name);
  connect(this, &QPushButton::clicked, this, &ColorWell::choose);
}

QColor ColorWell::shownColor() const {
  return nativeColor(color_, appearanceOf(palette()));
}

QSize ColorWell::sizeHint() const {
  return {static_cast<int>(form_metrics::kWellSize.width),
          static_cast<int>(form_metrics::kWellSize.height)};
}

void ColorWell::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  paintButtonGround(
      painter, rect(),
      {.appearance = appearanceOf(palette()), .isEnabled = isEnabled(), .isPressed = isDown()});
  const QRectF inner = QRectF(rect()).adjusted(kFrame, kFrame, -kFrame, -kFrame);
  QPainterPath shape;
  shape.addRoundedRect(inner, kRadius, kRadius);
  painter.setClipPath(shape);
  const QColor color = shownColor();
  if (color.alpha() < 255) paintBehindTranslucent(painter, inner);
  painter.fillPath(shape, color);
  painter.setClipping(false);
  // Makes a white colour visible on white.
  painter.setPen(QPen(QColor(0, 0, 0, 40), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(inner.adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 0.5, kRadius - 0.5);
}

void ColorWell::choose() {
  if (dialog_) return;
  std::vector<QColor> swatches;
  for (const Color& color : swatches_ ? swatches_() : std::vector<Color>()) {
    swatches.push_back(nativeColor(color, appearanceOf(palette())));
  }
  dialog_ = new ColorDialog(shownColor(), swatches, *this);
  dialog_->setWindowTitle(accessibleName());
  connect(dialog_, &QColorDialog::currentColorChanged, this, [this](const QColor& color) {
    // The colour that the dialog shows at first was not chosen by the user.
    if (color.isValid() && color.rgba64() != shownColor().rgba64()) setColor(colorOf(color));
  });
  connect(dialog_, &QColorDialog::rejected, this, [this, before = color_] {
    if (color_ != before) setColor(before);
  });
  dialog_->openBeside(*this);
}

void ColorWell::setColor(const Color& color) {
  color_ = color;
  update();
  if (changed_) changed_(color);
}

}  // namespace vembrix
