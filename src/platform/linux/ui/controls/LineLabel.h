#pragma once

#include <QLabel>

namespace vembrix {

/// One line of text with its baseline on a whole point, like the controls beside it; the baseline
/// of Qt's own label may lie between the pixels of a dense screen. As large as its text: characters
/// of another font, such as emoji, may need more than a line of its own font. Main thread.
class LineLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  [[nodiscard]] QSize sizeHint() const override;
  /// The distance of the baseline from the top, at the natural height.
  [[nodiscard]] int baseline() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Line {
    QString text;
    QFont font;
    QSize size;
    int baseline = 0;
  };

  [[nodiscard]] const Line& line() const;

  /// The last measurement.
  mutable Line line_;
};

}  // namespace vembrix
