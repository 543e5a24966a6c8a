#pragma once

#include <QTabBar>

namespace vembrix {

/// The row of segments over a plain tab view. Main thread.
class SegmentedTabBar : public QTabBar {
  Q_OBJECT

 public:
  explicit SegmentedTabBar(QWidget* parent);

  /// At which it is to be laid out.
  [[nodiscard]] int naturalHeight() const;

  /// What the eye takes for the segment of that tab.
  [[nodiscard]] QRectF segment(int index) const;

 protected:
  [[nodiscard]] QSize tabSizeHint(int index) const override;
  [[nodiscard]] QSize minimumTabSizeHint(int index) const override;
  void paintEvent(QPaintEvent* event) override;
  // Turning the wheel over it is not choosing a tab.
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace vembrix
