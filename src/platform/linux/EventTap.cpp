#include "platform/EventTap.h"

#include "platform/Application.h"
#include "platform/DockSwipeEvent.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"
#include "platform/linux/x11/X11Dock.h"
#include "platform/linux/x11/X11Input.h"

namespace vembrix {
namespace {

/// Sends the touchpad's events to the taps alone: the user's own configuration decides whether the
/// desktop responds to them.
void followTouchpad(EventStream& events) {
  Application::shared();
  X11Input::shared().followSwipes([&events](const GestureEvent& event) {
    events.sendToTaps(static_cast<std::uint32_t>(event.integerField(dockswipe::EventType)), event);
  });
}

}  // namespace

std::unique_ptr<EventTap> X11Services::makeTap(EventTap::Handler handler) {
  EventStream& events = X11Dock::on(desktop_).events();
  [[maybe_unused]] static const bool follows = (followTouchpad(events), true);
  return events.makeTap(std::move(handler));
}

std::unique_ptr<EventTap> EventTap::create(Handler handler) {
  return chosenDesktop().services.makeTap(std::move(handler));
}

}  // namespace vembrix
