#include "platform/linux/ui/controls/SliderControl.h"

#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {
namespace {

/// More than the pixels of any screen.
constexpr int kPositions = 10000;
/// The step of the arrow keys; the next one is that of Page Up and Page Down.
constexpr int kStep = kPositions / 100;
constexpr int kPage = kPositions / 10;
constexpr int kNaturalWidth = 160;

}  // namespace

SliderControl::SliderControl(Slider slider, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), slider_(std::move(slider)) {
  setStyle(&ControlStyle::shared());
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(QString::fromStdString(slider_.accessibleName));
  setRange(0, kPositions);
  setSingleStep(kStep);
  setPageStep(kPage);
  setValue(positionOf(slider_.value));
  connect(this, &QSlider::valueChanged, this, [this] {
    if (slider_.onChange) slider_.onChange(number());
  });
}

double SliderControl::number() const {
  return std::lerp(slider_.minimum, slider_.maximum, static_cast<double>(value()) / kPositions);
}

void SliderControl::moveTo(double number) {
  setValue(positionOf(number));
}

QRect SliderControl::knob() const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

QSize SliderControl::sizeHint() const {
  return {kNaturalWidth, control_metrics::kSliderHeight};
}

void SliderControl::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

int SliderControl::positionOf(double number) const {
  const double range = slider_.maximum - slider_.minimum;
  // NaN counts as the minimum.
  const double part = range > 0 ? (number - slider_.minimum) / range : 0;
  return part > 0 ? static_cast<int>(std::lround(std::min(part, 1.0) * kPositions)) : 0;
}

}  // namespace vembrix
