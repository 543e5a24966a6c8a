#include "platform/DockSwipeEvent.h"

#include <unistd.h>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/x11/X11Dock.h"

namespace vembrix {

std::unique_ptr<DockSwipeEvent> DockSwipeEvent::create() {
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) return EmbeddedDesktop::shared().makeSwipeEvent();
  return X11Dock::on(*x11).events().makeEvent(getpid(), [] { return true; });
}

}  // namespace vembrix
