#include "platform/linux/X11WindowDesktops.h"

#include <QCoreApplication>
#include <utility>
#include <vector>

#include "platform/linux/QtEwmh.h"
#include "platform/linux/X11Connection.h"

namespace vembrix {
namespace {

constexpr int kScreen = 0;

}  // namespace

X11WindowDesktops& X11WindowDesktops::shared() {
  // Never destroyed: Qt, which feeds it, is not either.
  static auto& desktops = *new X11WindowDesktops;
  return desktops;
}

X11WindowDesktops::X11WindowDesktops() {
  // Qt gets the events of its own windows' properties anyway, after what it has asked
  // of the windows itself.
  QCoreApplication::instance()->installNativeEventFilter(this);
}

void X11WindowDesktops::add(xcb_window_t window) {
  windows_.try_emplace(window);
}

void X11WindowDesktops::remove(xcb_window_t window) {
  windows_.erase(window);
}

void X11WindowDesktops::move(xcb_window_t window, std::uint32_t desktop) {
  const auto found = windows_.find(window);
  if (found == windows_.end() || this->desktop(window) == desktop) return;
  xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (found->second.isShown) {
    xcb_ewmh_request_change_wm_desktop(ewmh, kScreen, window, desktop,
                                       XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
  } else {
    xcb_ewmh_set_wm_desktop(ewmh, window, desktop);
  }
  // What the window manager makes of it, an event tells.
  found->second.desktop = desktop;
}

void X11WindowDesktops::noteShown(xcb_window_t window) {
  if (const auto found = windows_.find(window); found != windows_.end()) {
    found->second.isShown = true;
  }
}

std::optional<std::uint32_t> X11WindowDesktops::desktop(xcb_window_t window) {
  if (isStale_) refresh();
  const auto found = windows_.find(window);
  return found == windows_.end() ? std::nullopt : found->second.desktop;
}

bool X11WindowDesktops::nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                                          qintptr* /*result*/) {
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  if (eventType(*event) != XCB_PROPERTY_NOTIFY) return false;
  const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
  if (change.atom != ewmhOfQt()->_NET_WM_DESKTOP) return false;
  const auto found = windows_.find(change.window);
  if (found == windows_.end()) return false;
  found->second.isStale = true;
  isStale_ = true;
  return false;
}

void X11WindowDesktops::refresh() {
  isStale_ = false;
  xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  // All questions, then all answers: one round trip.
  std::vector<std::pair<Window*, xcb_get_property_cookie_t>> questions;
  for (auto& [id, window] : windows_) {
    if (!std::exchange(window.isStale, false)) continue;
    questions.emplace_back(&window, xcb_ewmh_get_wm_desktop_unchecked(ewmh, id));
  }
  for (const auto& [window, cookie] : questions) {
    std::uint32_t desktop = 0;
    const bool isSaid = xcb_ewmh_get_wm_desktop_reply(ewmh, cookie, &desktop, nullptr) != 0;
    window->desktop = isSaid ? std::optional(desktop) : std::nullopt;
  }
}

}  // namespace vembrix
