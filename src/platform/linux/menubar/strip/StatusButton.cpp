#include "platform/linux/menubar/strip/StatusButton.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "platform/Application.h"

namespace vembrix {

StatusButton::StatusButton(QWidget* parent, DragHandlers handlers)
    : QAbstractButton(parent), handlers_(std::move(handlers)) {
  // Every pixel is painted each time.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::NoFocus);
}

void StatusButton::setContent(const StatusItemContent& content) {
  label_.setContent(content);
  const QString name = label_.name();
  if (accessibleName() != name) setAccessibleName(name);
  update();
}

QSize StatusButton::sizeHint() const {
  return {label_.width(), StatusItemLabel::kBarHeight};
}

void StatusButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  paint(painter, height());
}

void StatusButton::paint(QPainter& painter, int height) {
  // The panel below it may be flatter.
  const int above = (height - StatusItemLabel::kBarHeight) / 2;
  painter.translate(0, above);
  label_.paint(painter, systemAppearance());
}

void StatusButton::mousePressEvent(QMouseEvent* event) {
  // Ignores another button while one is down. A press whose release went elsewhere has ended.
  if (press_ != Press::None && event->buttons() != event->button()) return;
  press_ = Press::Click;
  pressedAt_ = event->globalPosition().toPoint();
  grip_ = event->position().toPoint();
}

void StatusButton::mouseMoveEvent(QMouseEvent* event) {
  if (press_ == Press::None) return;
  const QPoint mouse = event->globalPosition().toPoint();
  if (press_ == Press::Click) {
    const bool isLeft = event->buttons().testFlag(Qt::LeftButton);
    const int distance = (mouse - pressedAt_).manhattanLength();
    if (!isLeft || distance < QApplication::startDragDistance()) return;
    press_ = Press::Drag;
  }
  handlers_.moved(mouse - grip_);
}

void StatusButton::mouseReleaseEvent(QMouseEvent* event) {
  if (press_ == Press::None || event->buttons() != Qt::NoButton) return;
  const Press press = std::exchange(press_, Press::None);
  if (press == Press::Drag) {
    handlers_.dropped();
  } else if (rect().contains(event->position().toPoint())) {
    click();
  }
}

}  // namespace vembrix
