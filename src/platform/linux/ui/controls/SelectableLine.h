#pragma once

#include <QLineEdit>
#include <string>

namespace vembrix {

/// One line that can be selected and copied. Truncated with an ellipsis if it is too long, unless
/// it has the keyboard and can be scrolled. Main thread.
class SelectableLine : public QLineEdit {
  Q_OBJECT

 public:
  enum class Bezel { None, Rounded };

  SelectableLine(const std::string& text, Bezel bezel, QWidget* parent);

  /// The distance of the baseline from the top, at the natural height.
  [[nodiscard]] int baseline() const;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int baseline(int height) const;
  /// Returns the height of a framed line.
  [[nodiscard]] int fieldHeight() const;
  void liftText();
  void paintText(QPainter& painter, const QRect& line, const QString& shown) const;
};

}  // namespace vembrix
