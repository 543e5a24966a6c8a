#include "platform/linux/support/TestSession.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <cstdlib>

namespace vembrix {

TestSession::TestSession() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "SESSION_MANAGER", "QT_QPA_PLATFORM",
                           "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR", "VEMBRIX_DESKTOP"}) {
    unsetenv(name);
  }
  setVariable("FONTCONFIG_FILE", VEMBRIX_FONTS_FOLDER "/" + fonts() + ".conf");
  if (const char* scale = std::getenv("VEMBRIX_SCALE")) setVariable("QT_SCALE_FACTOR", scale);
  setVariable("XDG_CONFIG_HOME", settings_.path());
  for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) {
    setVariable(name, "unix:path=" + (settings_.path() / "no-bus").string());
  }
}

std::string TestSession::fonts() {
  const char* fonts = std::getenv("VEMBRIX_FONTS");
  return fonts ? fonts : "installed";
}

void TestSession::useNoScreen() {
  setVariable("VEMBRIX_DESKTOP", "embedded");
  setVariable("QT_QPA_PLATFORM", "offscreen");
}

void TestSession::setVariable(const char* name, const std::string& value) {
  setenv(name, value.c_str(), 1);
}

void runFor(Duration duration) {
  QEventLoop loop;
  QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(duration), Qt::PreciseTimer,
                     &loop, &QEventLoop::quit);
  loop.exec();
}

bool runUntil(const std::function<bool()>& condition, Duration limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    // Limits the wait for an event to a millisecond.
    QTimer wake;
    wake.start(1);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

}  // namespace vembrix
