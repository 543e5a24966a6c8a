#pragma once

#include <QPointer>
#include <QPushButton>
#include <functional>

#include "platform/Color.h"

class QColor;
class QColorDialog;

namespace vembrix {

/// Shows a colour and opens the desktop's colour dialog to change it. Reports each colour tried out
/// there at once; cancelling the dialog reports the former colour. Main thread.
class ColorWell : public QPushButton {
  Q_OBJECT

 public:
  ColorWell(const QString& name, const Color& color,
            std::function<void(const Color& color)> changed, QWidget* parent);

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
  QPointer<QColorDialog> dialog_;
};

}  // namespace vembrix
