#include "platform/linux/session/SleepWatcher.h"

#include "platform/NotificationCenter.h"
#include "platform/linux/session/SessionBus.h"

namespace vembrix {

SleepWatcher::SleepWatcher() {
  auto bus = systemBus();
  if (!bus) return;
  bus->connect("org.freedesktop.login1", "/org/freedesktop/login1",
               "org.freedesktop.login1.Manager", "PrepareForSleep", this,
               SLOT(prepareForSleep(bool)));
}

void SleepWatcher::prepareForSleep(bool isGoingToSleep) {
  if (!isGoingToSleep) NotificationCenter::workspace().post(notification::kDidWake);
}

}  // namespace vembrix
