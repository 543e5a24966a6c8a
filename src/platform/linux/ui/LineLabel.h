#pragma once

#include <QLabel>

namespace vembrix {

/// One line of text that stands on a whole point, as the controls beside it do. Qt's
/// own label puts the baseline between the pixels of a dense screen. As large as what
/// it shows: signs that another font draws, such as emoji, may need more than a line
/// of its own font. Main thread.
class LineLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  [[nodiscard]] QSize sizeHint() const override;
  /// From its top, at its natural height.
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

  /// What was measured last.
  mutable Line line_;
};

}  // namespace vembrix
