#pragma once

#include <QAbstractButton>
#include <QPoint>
#include <functional>

#include "platform/linux/menubar/strip/StatusItemLabel.h"

namespace vembrix {

/// The status item on its strip, which can be clicked and dragged. A press with hardly any movement
/// is a click. Main thread.
class StatusButton : public QAbstractButton {
 public:
  struct DragHandlers {
    /// Called while the mouse drags the button, with the screen position for its top left corner.
    std::function<void(const QPoint& corner)> moved;
    /// Called when the user drops the button.
    std::function<void()> dropped;
  };

  StatusButton(QWidget* parent, DragHandlers handlers);

  void setContent(const StatusItemContent& content);
  [[nodiscard]] const StatusItemLabel& label() const { return label_; }

  [[nodiscard]] QSize sizeHint() const override;

  /// Paints the button with its present content at that height.
  void paint(QPainter& painter, int height);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  enum class Press { None, Click, Drag };

  StatusItemLabel label_;
  DragHandlers handlers_;
  Press press_ = Press::None;
  QPoint pressedAt_;
  /// The mouse's offset from the top left corner.
  QPoint grip_;
};

}  // namespace vembrix
