#pragma once

#include <QTabBar>

namespace vembrix {

/// The row of segments over a plain tab view. Main thread.
class SegmentedTabBar : public QTabBar {
  Q_OBJECT

 public:
  explicit SegmentedTabBar(QWidget* parent);

  /// Returns the height for layouts.
  [[nodiscard]] int naturalHeight() const;

  /// Returns the visible segment of that tab.
  [[nodiscard]] QRectF segment(int index) const;

 protected:
  [[nodiscard]] QSize tabSizeHint(int index) const override;
  [[nodiscard]] QSize minimumTabSizeHint(int index) const override;
  void paintEvent(QPaintEvent* event) override;
  // The wheel chooses no tab.
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace vembrix
