#include "platform/DockSwipeEvent.h"

#include <unistd.h>

#include "platform/Application.h"
#include "platform/EventTap.h"
#include "platform/embedded/EmbeddedDesktop.h"
#include "platform/linux/ChosenDesktop.h"
#include "platform/linux/X11Dock.h"
#include "platform/linux/X11Input.h"

namespace vembrix {
namespace {

/// Never destroyed: taps and events may outlive main().
X11Dock& dockOn(X11Desktop& desktop) {
  static auto& dock = *new X11Dock(desktop);
  return dock;
}

/// The events of the touchpad go to the taps alone: the user's own setup decides whether the
/// desktop responds to them.
void followTouchpad(EventStream& events) {
  Application::shared();
  X11Input::shared().followSwipes([&events](const GestureEvent& event) {
    events.sendToTaps(static_cast<std::uint32_t>(event.integerField(dockswipe::EventType)), event);
  });
}

}  // namespace

std::unique_ptr<DockSwipeEvent> DockSwipeEvent::create() {
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) return EmbeddedDesktop::shared().makeSwipeEvent();
  return dockOn(*x11).events().makeEvent(getpid(), [] { return true; });
}

std::unique_ptr<EventTap> EventTap::create(Handler handler) {
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) return EmbeddedDesktop::shared().makeTap(std::move(handler));
  EventStream& events = dockOn(*x11).events();
  [[maybe_unused]] static const bool follows = (followTouchpad(events), true);
  return events.makeTap(std::move(handler));
}

}  // namespace vembrix
