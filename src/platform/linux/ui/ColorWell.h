#pragma once

#include <QPointer>
#include <QPushButton>
#include <functional>
#include <utility>
#include <vector>

#include "platform/Color.h"

class QColor;

namespace vembrix {

class ColorDialog;

/// Shows a colour and opens a dialog to change it. Reports each colour that is tried out there at
/// once; cancelling the dialog reports the former colour. Main thread.
class ColorWell : public QPushButton {
  Q_OBJECT

 public:
  ColorWell(const QString& name, const Color& color,
            std::function<void(const Color& color)> changed, QWidget* parent);

  /// Sets a function that returns the colours to offer first, called whenever the dialog opens.
  void setSwatches(std::function<std::vector<Color>()> swatches) {
    swatches_ = std::move(swatches);
  }

  [[nodiscard]] const Color& color() const { return color_; }
  [[nodiscard]] QColor shownColor() const;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void choose();
  void setColor(const Color& color);

  Color color_;
  std::function<void(const Color&)> changed_;
  std::function<std::vector<Color>()> swatches_;
  QPointer<ColorDialog> dialog_;
};

}  // namespace vembrix
