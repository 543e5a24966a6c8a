#pragma once

#include <QLabel>

namespace vembrix {

/// One line of text that stands on a whole point, as the controls beside it do. Qt's
/// own label puts the baseline between the pixels of a dense screen. Main thread.
class LineLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  /// From its top, at its natural height.
  [[nodiscard]] int baseline() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace vembrix
