#pragma once

#include <QAbstractButton>
#include <QPoint>
#include <functional>

#include "platform/linux/menubar/StatusItemLabel.h"

namespace vembrix {

/// The status item on its strip: shows the content, is clicked and dragged. A press that
/// moves no farther than the user's hand trembles is a click. Main thread.
class StatusButton : public QAbstractButton {
 public:
  struct DragHandlers {
    /// Where its top left corner is to go, on the screen; while the mouse moves.
    std::function<void(const QPoint& corner)> moved;
    /// The user has let it go.
    std::function<void()> dropped;
  };

  StatusButton(QWidget* parent, DragHandlers handlers);

  void setContent(const StatusItemContent& content);
  [[nodiscard]] const StatusItemLabel& label() const { return label_; }

  [[nodiscard]] QSize sizeHint() const override;

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
  /// From its top left corner to the mouse.
  QPoint grip_;
};

}  // namespace vembrix
