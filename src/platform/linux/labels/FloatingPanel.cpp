#include "platform/linux/labels/FloatingPanel.h"

#include <QPainter>
#include <QWindow>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/linux/Compositor.h"
#include "platform/linux/QtEwmh.h"
#include "platform/linux/ScreenCoordinates.h"
#include "platform/linux/WindowHints.h"
#include "platform/linux/labels/PanelShadow.h"

namespace vembrix {
namespace {

/// All that exist.
std::vector<FloatingPanel*>& panels() {
  static std::vector<FloatingPanel*> panels;
  return panels;
}

QRect withShadow(const QRect& panel) {
  constexpr int kExtent = kPanelShadowExtent;
  return panel.adjusted(-kExtent, -kExtent, kExtent, kExtent);
}

/// A shape of no pixel of the window. Qt takes an empty region for no shape at all.
QRegion nothing() {
  return QRegion(-2, -2, 1, 1);
}

}  // namespace

FloatingPanel::FloatingPanel(const Options& options, PanelContent& content)
    : content_(content),
      frame_(options.frame),
      level_(options.level),
      cornerRadius_(options.cornerRadius),
      alpha_([this](double alpha) { applyAlpha(alpha); }) {
  setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                 Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput |
                 Qt::NoDropShadowWindowHint);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TranslucentBackground);
  setWindowRole(options.role);
  setGeometry(withShadow(windowGeometry(frame_)));
  // Makes the native window, so that its hints are there before it is shown.
  winId();
  hideFromSwitchers(*windowHandle());
  announceOwnShadow(*windowHandle(), kPanelShadowExtent);
  placement_ = PanelPlacement::create(*windowHandle(),
                                      {.frame = frame_,
                                       .level = level_,
                                       .collectionBehavior = options.collectionBehavior,
                                       .setShown = [this](bool shown) { setShown(shown); }});
  connect(&Compositor::shared(), &Compositor::changed, this, [this] {
    updateShape();
    update();
  });
  updateShape();
  panels().push_back(this);
}

FloatingPanel::~FloatingPanel() {
  std::erase(panels(), this);
}

void FloatingPanel::setName(const QString& name) {
  // Not the widget's title, in which "[*]" is no text.
  if (windowHandle()->title() != name) windowHandle()->setTitle(name);
  if (accessibleName() != name) setAccessibleName(name);
}

void FloatingPanel::setFrame(const Rect& frame) {
  if (frame != frame_) {
    frame_ = frame;
    placement_->setFrame(frame);
  }
  // The same frame is elsewhere when the primary screen has another height.
  setGeometry(withShadow(windowGeometry(frame)));
}

void FloatingPanel::setCollectionBehavior(std::uint64_t behavior) {
  placement_->setCollectionBehavior(behavior);
}

void FloatingPanel::orderFront() {
  if (isVisible()) raiseInLevel();
  placement_->orderFront();
}

void FloatingPanel::setShown(bool shown) {
  if (isVisible() == shown) return;
  setVisible(shown);
  if (shown) raiseInLevel();
  content_.setVisible(shown && alpha_.value() > 0);
}

void FloatingPanel::raiseInLevel() {
  raise();
  // Window managers know one level above programs only.
  for (FloatingPanel* other : panels()) {
    if (other->level_ > level_ && other->isVisible()) other->raise();
  }
}

QRectF FloatingPanel::panelRect() const {
  constexpr double kExtent = kPanelShadowExtent;
  return QRectF(rect()).adjusted(kExtent, kExtent, -kExtent, -kExtent);
}

// Alpha

void FloatingPanel::applyAlpha(double alpha) {
  const bool wasSeen = windowHandle()->opacity() > 0;
  // For whoever puts the screen together; before the shape, so that what comes up is
  // as faint from the start.
  windowHandle()->setOpacity(alpha);
  if (wasSeen == (alpha > 0)) return;
  updateShape();
  content_.setVisible(isVisible() && alpha > 0);
}

FloatingPanel::Shape FloatingPanel::shape() const {
  // The opacity says it all; and compositors may overlook that a window takes another
  // shape while it is on another desktop.
  if (Compositor::shared().isRunning()) return Shape::Whole;
  // The window is still there, and in its desktop's list.
  return windowHandle()->opacity() <= 0 ? Shape::Nothing : Shape::Panel;
}

void FloatingPanel::updateShape() {
  if (!ewmhOfQt()) return;
  const Shape shape = this->shape();
  if (std::exchange(shape_, shape) == shape) return;
  switch (shape) {
    case Shape::Whole:
      windowHandle()->setMask({});
      break;
    case Shape::Panel:
      windowHandle()->setMask(roundedShape(panelRect(), cornerRadius_));
      break;
    case Shape::Nothing:
      windowHandle()->setMask(nothing());
      break;
  }
}

void FloatingPanel::resizeEvent(QResizeEvent* /*event*/) {
  if (shape_ == Shape::Panel) windowHandle()->setMask(roundedShape(panelRect(), cornerRadius_));
}

void FloatingPanel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF panel = panelRect();
  if (!Compositor::shared().isRunning()) {
    content_.paint(painter, panel, Backing::Opaque);
    return;
  }
  paintPanelShadow(painter, panel, cornerRadius_);
  content_.paint(painter, panel, Backing::Translucent);
}

}  // namespace vembrix
