#include "platform/NotificationCenter.h"

#include "platform/embedded/LocalNotificationCenter.h"

namespace vembrix {

// All three within the process: what the desktop and the session tell comes in
// by X events and D-Bus and is posted here by who receives it. Never destroyed:
// observations end whenever their owners do.

NotificationCenter& NotificationCenter::defaultCenter() {
  static auto& center = *new LocalNotificationCenter;
  return center;
}

NotificationCenter& NotificationCenter::workspace() {
  static auto& center = *new LocalNotificationCenter;
  return center;
}

NotificationCenter& NotificationCenter::distributed() {
  static auto& center = *new LocalNotificationCenter;
  return center;
}

}  // namespace vembrix
