#include "platform/linux/x11/X11Dock.h"

namespace vembrix {
namespace {

/// A window manager that has not answered a request by then will not answer it.
constexpr std::chrono::milliseconds kPatience{500};

}  // namespace

X11Dock& X11Dock::on(X11Desktop& desktop) {
  static auto& dock = *new X11Dock(desktop);
  return dock;
}

X11Dock::X11Dock(X11Desktop& desktop)
    : desktop_(desktop),
      dock_([this](ISSDirection direction, Dock::Arrival) { move(direction); }),
      events_([this](const GestureEvent& event) { dock_.handle(event); }),
      arrival_(
          NotificationCenter::workspace().addObserver(notification::kActiveSpaceDidChange, [this] {
            if (request_ && request_->space == desktop_.activeSpace()) request_.reset();
          })) {}

void X11Dock::move(ISSDirection direction) {
  const Clock::time_point now = Clock::now();
  // The model lags behind by a round trip, so swipes in quick succession start from the target of
  // the previous one.
  const bool underWay = request_ && now - request_->time < kPatience;
  const X11Desktop::SpaceID from = underWay ? request_->space : desktop_.activeSpace();
  const X11Desktop::SpaceID target = desktop_.spaceBeside(from, signOf(direction));
  if (desktop_.activate(target)) request_ = {target, now};
}

}  // namespace vembrix
