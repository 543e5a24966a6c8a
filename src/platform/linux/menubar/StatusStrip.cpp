#include "platform/linux/menubar/StatusStrip.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/Application.h"
#include "platform/linux/WindowHints.h"

namespace vembrix {

StatusStrip::StatusStrip(std::function<void()> pressed) : pressed_(std::move(pressed)) {
  setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                 Qt::WindowDoesNotAcceptFocus);
  setAttribute(Qt::WA_ShowWithoutActivating);
  // Every pixel is painted each time.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setWindowRole(QStringLiteral("status-item"));
  place();
  // Makes the native window, so that its hints are there before it is shown.
  winId();
  makeDock(*windowHandle());
  showOnAllDesktops(*windowHandle());
  hideFromTaskLists(*windowHandle());
  reserveTopEdge(*windowHandle(), geometry());
  updateName();
  followScreens();
  themeObservation_ = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [this] { update(); });
}

void StatusStrip::setContent(const StatusItemContent& content) {
  if (content == label_.content()) return;
  label_.setContent(content);
  updateName();
  place();
  update();
  // Not before it is known how wide.
  if (!isVisible()) show();
}

void StatusStrip::followScreens() {
  const auto follow = [this](QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, &StatusStrip::place);
  };
  connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
  connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &StatusStrip::place);
  for (QScreen* screen : QGuiApplication::screens()) follow(screen);
}

void StatusStrip::place() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect bounds = screen->geometry();
  const int width = std::min(label_.width(), bounds.width());
  const QRect target(bounds.x() + bounds.width() - width, bounds.y(), width,
                     StatusItemLabel::kBarHeight);
  if (target == geometry()) return;
  setGeometry(target);
  if (windowHandle()) reserveTopEdge(*windowHandle(), target);
}

void StatusStrip::updateName() {
  // Not the widget's title, in which "[*]" is no text.
  const QString name = label_.name();
  if (windowHandle()->title() != name) windowHandle()->setTitle(name);
  setAccessibleName(name);
}

void StatusStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  label_.paint(painter, Application::shared().effectiveAppearance().value_or(Appearance::Light));
}

void StatusStrip::mousePressEvent(QMouseEvent* /*event*/) {
  pressed_();
}

}  // namespace vembrix
