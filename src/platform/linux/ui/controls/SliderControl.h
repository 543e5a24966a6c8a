#pragma once

#include <QSlider>

#include "platform/SettingsForm.h"

namespace vembrix {

/// A slider over real numbers. Main thread.
class SliderControl : public QSlider {
  Q_OBJECT

 public:
  SliderControl(Slider slider, QWidget* parent);

  [[nodiscard]] double minimumNumber() const { return slider_.minimum; }
  [[nodiscard]] double maximumNumber() const { return slider_.maximum; }
  /// Returns the knob's value.
  [[nodiscard]] double number() const;
  /// Moves the knob on behalf of an assistive program.
  void moveTo(double number);

  [[nodiscard]] QRect knob() const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  // The wheel scrolls the page.
  void wheelEvent(QWheelEvent* event) override;

 private:
  [[nodiscard]] int positionOf(double number) const;

  Slider slider_;
};

}  // namespace vembrix
