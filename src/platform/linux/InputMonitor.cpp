#include "platform/InputMonitor.h"

#include "platform/Application.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/x11/X11Input.h"

namespace vembrix {

InputMonitor& InputMonitor::shared() {
  if (!chosenDesktop().x11) return EmbeddedDesktop::shared().input();
  // Qt reports the program's own windows only with an application.
  Application::shared();
  return X11Input::shared();
}

}  // namespace vembrix
