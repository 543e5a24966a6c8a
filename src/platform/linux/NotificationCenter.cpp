#include "platform/NotificationCenter.h"

#include "platform/portable/LocalNotificationCenter.h"

namespace vembrix {

// All three are within the process: the receivers of X events and D-Bus signals post the
// notifications of the desktop and the session here. Never destroyed, because observations may end
// at any time.

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
