// Defines the seam's access functions to return the embedded services.

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "platform/embedded/services/EmbeddedBackgroundWork.h"
#include "platform/embedded/services/EmbeddedBundle.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedLogTool.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedPasteboard.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "platform/embedded/services/EmbeddedWorkspace.h"
#include "platform/portable/LocalNotificationCenter.h"

namespace vembrix {

Accessibility& Accessibility::shared() {
  return EmbeddedDesktop::shared().accessibility();
}
Application& Application::shared() {
  return EmbeddedApplication::shared();
}
BackgroundWork& BackgroundWork::shared() {
  return EmbeddedBackgroundWork::shared();
}
const Bundle& Bundle::main() {
  return EmbeddedBundle::shared();
}
LogTool& LogTool::shared() {
  return EmbeddedLogTool::shared();
}
MainQueue& MainQueue::main() {
  return EmbeddedMainQueue::shared();
}
InputMonitor& InputMonitor::shared() {
  return EmbeddedDesktop::shared().input();
}
Pasteboard& Pasteboard::general() {
  return EmbeddedPasteboard::shared();
}
const Screens& Screens::shared() {
  return EmbeddedDesktop::shared().screens();
}
SpaceNaming* SpaceNaming::shared() {
  return &EmbeddedDesktop::shared().spaceNaming();
}
SystemLog& SystemLog::shared() {
  return EmbeddedLog::shared();
}
UserDefaults& UserDefaults::standard() {
  return EmbeddedUserDefaults::shared();
}
WindowServer& WindowServer::shared() {
  return EmbeddedDesktop::shared().windowServer();
}

Workspace& Workspace::shared() {
  return EmbeddedWorkspace::shared();
}

EmbeddedPasteboard& EmbeddedPasteboard::shared() {
  static EmbeddedPasteboard pasteboard;
  return pasteboard;
}
EmbeddedWorkspace& EmbeddedWorkspace::shared() {
  static EmbeddedWorkspace workspace;
  return workspace;
}

std::unique_ptr<DockSwipeEvent> DockSwipeEvent::create() {
  return EmbeddedDesktop::shared().makeSwipeEvent();
}

std::unique_ptr<EventTap> EventTap::create(Handler handler) {
  return EmbeddedDesktop::shared().makeTap(std::move(handler));
}

NotificationCenter& NotificationCenter::defaultCenter() {
  static LocalNotificationCenter center;
  return center;
}

NotificationCenter& NotificationCenter::workspace() {
  static LocalNotificationCenter center;
  return center;
}

NotificationCenter& NotificationCenter::distributed() {
  static LocalNotificationCenter center;
  return center;
}

}  // namespace vembrix
