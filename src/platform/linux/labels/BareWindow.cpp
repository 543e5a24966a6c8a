#include "platform/linux/labels/BareWindow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <cmath>

#include "platform/linux/labels/PanelShadow.h"
#include "platform/linux/labels/PanelStage.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/Compositor.h"
#include "platform/linux/support/ScreenCoordinates.h"
#include "platform/portable/SpaceWindows.h"

namespace vembrix {
namespace {

QRect withShadow(const QRect& panel) {
  constexpr int kExtent = kPanelShadowExtent;
  return panel.adjusted(-kExtent, -kExtent, kExtent, kExtent);
}

QRectF withoutShadow(const QRectF& bounds) {
  constexpr double kExtent = kPanelShadowExtent;
  return bounds.adjusted(kExtent, kExtent, -kExtent, -kExtent);
}

QRectF scaled(const QRectF& rect, double scale) {
  return {rect.topLeft() * scale, rect.size() * scale};
}

}  // namespace

BareWindow::BareWindow(const Options& options, PanelContent& content)
    : content_(content),
      frame_(options.frame),
      level_(options.level),
      cornerRadius_(options.cornerRadius),
      role_(options.role),
      number_(chosenWindows().add({.owner = "Vembrix",
                                   .frame = options.frame,
                                   .level = options.level,
                                   .collectionBehavior = options.collectionBehavior,
                                   .spaces = {}})),
      alpha_([this](double alpha) { applyAlpha(alpha); },
             {.play =
                  [this](auto interval, auto alphas) {
                    return isShown_ && window_ && window_->playOpacities(interval, alphas);
                  },
              .stop =
                  [this] {
                    if (window_) window_->stopOpacities();
                  }}) {
  PanelStage::shared().add(*this);
}

BareWindow::~BareWindow() {
  PanelStage::shared().remove(*this);
  chosenWindows().remove(number_);
}

void BareWindow::setName(const QString& name) {
  name_ = name;
  if (isShown_ && window_) window_->setName(name);
}

void BareWindow::setFrame(const Rect& frame) {
  frame_ = frame;
  chosenWindows().find(number_)->frame = frame;
  if (isShown_) refreshing_ = MainQueue::main().schedule(Duration::zero(), [this] { refresh(); });
}

void BareWindow::setCollectionBehavior(std::uint64_t behavior) {
  chosenWindows().find(number_)->collectionBehavior = behavior;
}

void BareWindow::orderFront() {
  if (isShown_) {
    raise();
    PanelStage::shared().noteShown(*this);
  }
  chosenWindows().orderFront(number_);
}

void BareWindow::raise() {
  if (window_) window_->raise();
}

// Visibility

void BareWindow::applyAlpha(double alpha) {
  if (isOnScreen_ && isShown_ != (alpha > 0)) {
    PanelStage::shared().updateSoon();
  } else if (isShown_ && window_ && Compositor::shared().isRunning()) {
    window_->setOpacity(alpha);
  }
}

void BareWindow::setOnScreen(bool isOnScreen) {
  isOnScreen_ = isOnScreen;
  // Intermediate values are visible only with a compositor.
  const bool isGradual = isOnScreen && Compositor::shared().isRunning();
  if (!isGradual) alpha_.setGradual(false);
  const bool isShown = isOnScreen && alpha_.value() > 0;
  if (isShown != isShown_) {
    isShown_ = isShown;
    if (isShown) {
      show();
    } else {
      hide();
    }
    content_.setVisible(isShown);
  }
  // Gradual fades need a window.
  if (isGradual) alpha_.setGradual(true);
}

void BareWindow::show() {
  if (window_ && window_->isLost()) dropWindow();
  if (!window_) window_ = PanelWindow::create(role_);
  if (!window_) return;
  window_->setName(name_);
  refresh();
  window_->show(alpha_.value());
  PanelStage::shared().noteShown(*this);
}

void BareWindow::hide() {
  refreshing_.reset();
  if (window_) window_->hide();
}

void BareWindow::dropWindow() {
  window_.reset();
  isPainted_ = false;
}

// The picture

QRectF BareWindow::bounds() const {
  return {QPointF(), withShadow(windowGeometry(frame_)).size()};
}

Backing BareWindow::backing() const {
  const bool shinesThrough = Compositor::shared().isRunning() && window_->canBeTranslucent();
  return shinesThrough ? Backing::Translucent : Backing::Opaque;
}

void BareWindow::update() {
  isPainted_ = false;
  if (isShown_) refreshing_ = MainQueue::main().schedule(Duration::zero(), [this] { refresh(); });
}

void BareWindow::refresh() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (!window_ || !screen) return;
  const double scale = screen->devicePixelRatio();
  const QRect geometry = nativeGeometry(withShadow(windowGeometry(frame_)), *screen);
  window_->setGeometry(geometry);
  if (isPainted_ && paintedSize_ == geometry.size()) return;
  isPainted_ = true;
  paintedSize_ = geometry.size();
  const Backing backing = this->backing();
  window_->setPicture(picture(scale, backing, bounds()));
  window_->setShadow(static_cast<int>(std::lround(kPanelShadowExtent * scale)));
  const QRectF panel = scaled(withoutShadow(bounds()), scale);
  window_->setShape(backing == Backing::Opaque ? roundedShape(panel, cornerRadius_ * scale)
                                               : QRegion());
}

void BareWindow::update(const QRectF& part) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  // An outdated picture will be redrawn as a whole soon.
  if (!isShown_ || !window_ || !isPainted_ || !screen || part.isEmpty()) return;
  const double scale = screen->devicePixelRatio();
  window_->paint(picture(scale, backing(), part), scaled(part, scale).toAlignedRect().topLeft());
}

QImage BareWindow::picture(double scale, Backing backing, const QRectF& part) const {
  const QRect pixels = scaled(part, scale).toAlignedRect();
  QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-QPointF(pixels.topLeft()) / scale);
  const QRectF panel = withoutShadow(bounds());
  if (backing == Backing::Translucent) paintPanelShadow(painter, panel, cornerRadius_);
  content_.paint(painter, panel, backing);
  return image;
}

}  // namespace vembrix
