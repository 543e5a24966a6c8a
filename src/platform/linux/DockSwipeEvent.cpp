#include "platform/DockSwipeEvent.h"

#include <unistd.h>

#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"
#include "platform/linux/x11/X11Dock.h"

namespace vembrix {

std::unique_ptr<DockSwipeEvent> X11Services::makeSwipeEvent() {
  return X11Dock::on(desktop_).events().makeEvent(getpid(), [] { return true; });
}

std::unique_ptr<DockSwipeEvent> DockSwipeEvent::create() {
  return chosenDesktop().services.makeSwipeEvent();
}

}  // namespace vembrix
