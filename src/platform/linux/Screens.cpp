#include "platform/Screens.h"

#include <QGuiApplication>
#include <QScreen>

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"

namespace vembrix {
namespace {

/// Converts from Qt's coordinates, from the top left, to the seam's, from the bottom left of the
/// primary screen.
Rect flipped(const QRect& rect, const QRect& primary) {
  const int primaryBottom = primary.y() + primary.height();
  return {static_cast<double>(rect.x() - primary.x()),
          static_cast<double>(primaryBottom - rect.y() - rect.height()),
          static_cast<double>(rect.width()), static_cast<double>(rect.height())};
}

std::vector<Screen> read() {
  std::vector<Screen> screens;
  // The primary screen is the first.
  const QList<QScreen*> all = QGuiApplication::screens();
  for (const QScreen* screen : all) {
    const QRect primary = all.constFirst()->geometry();
    screens.push_back({flipped(screen->geometry(), primary),
                       flipped(screen->availableGeometry(), primary), screen->devicePixelRatio()});
  }
  return screens;
}

/// Qt's screens in the seam's coordinates. Qt emits several signals for one change; they are
/// announced together, once.
class QtScreens : public QObject, public Screens {
 public:
  QtScreens() {
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
      follow(*screen);
      change();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] { change(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, [this] { change(); });
    for (QScreen* screen : QGuiApplication::screens()) follow(*screen);
    screens_ = read();
    announced_ = screens_;
  }

  const std::vector<Screen>& all() const override { return screens_; }

  const Screen* mainScreen() const override {
    return screens_.empty() ? nullptr : &screens_.front();
  }

 private:
  void follow(QScreen& screen) {
    const auto changed = [this] { change(); };
    QObject::connect(&screen, &QScreen::geometryChanged, this, changed);
    QObject::connect(&screen, &QScreen::availableGeometryChanged, this, changed);
    QObject::connect(&screen, &QScreen::logicalDotsPerInchChanged, this, changed);
  }

  void change() {
    screens_ = read();
    announcement_ = MainQueue::main().schedule(Duration::zero(), [this] { announce(); });
  }

  void announce() {
    screens_ = read();
    if (screens_ == announced_) return;
    announced_ = screens_;
    NotificationCenter::defaultCenter().post(notification::kScreenParametersDidChange);
  }

  std::vector<Screen> screens_;
  std::vector<Screen> announced_;
  WorkItem announcement_;
};

}  // namespace

const Screens& X11Services::screens() {
  // Qt knows its screens only once there is an application.
  Application::shared();
  static auto& screens = *new QtScreens;
  return screens;
}

const Screens& Screens::shared() {
  return chosenDesktop().services.screens();
}

}  // namespace vembrix
