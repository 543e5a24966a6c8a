#include "platform/InputMonitor.h"

#include "platform/Application.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"
#include "platform/linux/x11/X11Input.h"

namespace vembrix {

InputMonitor& X11Services::input() {
  // Qt reports events of the program's own windows only once there is an application.
  Application::shared();
  return X11Input::shared();
}

InputMonitor& InputMonitor::shared() {
  return chosenDesktop().services.input();
}

}  // namespace vembrix
