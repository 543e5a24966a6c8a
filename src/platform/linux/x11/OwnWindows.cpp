#include "platform/linux/x11/OwnWindows.h"

#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>

#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
OwnWindows::OwnWindows(X11EventReader& reader) : reader_(reader) {
  qGuiApp->installEventFilter(this);
  for (QWindow* window : QGuiApplication::topLevelWindows()) {
    if (window->handle()) follow(static_cast<xcb_window_t>(window->winId()));
  }
  if (!windows_.empty()) askWhereInputGoes();
}

bool OwnWindows::havePointer() const {
  return pointerWindow_ != XCB_WINDOW_NONE;
}

bool OwnWindows::haveKeyboard() const {
  return focusWindow_ != XCB_WINDOW_NONE;
}

bool OwnWindows::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::PlatformSurface) return false;
  auto* window = qobject_cast<QWindow*>(object);
  if (!window) return false;
  // Only creation counts here. The server reports the end of a window, in order with its input.
  const auto type = static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType();
  if (type == QPlatformSurfaceEvent::SurfaceCreated) {
    follow(static_cast<xcb_window_t>(window->winId()));
  }
  return false;
}

void OwnWindows::follow(xcb_window_t window) {
  windows_.insert(window);
  // Qt may have buffered the request that creates the window.
  if (const xcb_ewmh_connection_t* qt = ewmhOfQt()) {
    const XcbPtr<xcb_get_input_focus_reply_t> answer{xcb_get_input_focus_reply(
        qt->connection, xcb_get_input_focus_unchecked(qt->connection), nullptr)};
  }
  const std::uint32_t events = XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
                               XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  // Waits for the server, because Qt shows the window over another connection: it may appear under
  // the pointer.
  xcb_connection_t* xcb = reader_.connection().xcb();
  const auto cookie = xcb_change_window_attributes_checked(xcb, window, XCB_CW_EVENT_MASK, &events);
  const XcbPtr<xcb_generic_error_t> error{xcb_request_check(xcb, cookie)};
  reader_.readSoon();
}

void OwnWindows::askWhereInputGoes() {
  xcb_connection_t* xcb = reader_.connection().xcb();
  // Windows lie within the frames of the window manager, so the search goes down from the root.
  for (xcb_window_t window = reader_.connection().root(); window != XCB_WINDOW_NONE;) {
    if (windows_.contains(window)) pointerWindow_ = window;
    const XcbPtr<xcb_query_pointer_reply_t> pointer{
        xcb_query_pointer_reply(xcb, xcb_query_pointer_unchecked(xcb, window), nullptr)};
    window = pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
  }
  const XcbPtr<xcb_get_input_focus_reply_t> focus{
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus_unchecked(xcb), nullptr)};
  if (focus && windows_.contains(focus->focus)) focusWindow_ = focus->focus;
}

void OwnWindows::leave(xcb_window_t window) {
  if (pointerWindow_ == window) pointerWindow_ = XCB_WINDOW_NONE;
  if (focusWindow_ == window) focusWindow_ = XCB_WINDOW_NONE;
}

void OwnWindows::note(const xcb_generic_event_t& event) {
  // A grab by another program counts as leaving and its end as entering, as that program has the
  // input in between. The grab of this program's menu, which takes all input, counts as entering.
  switch (eventType(event)) {
    case XCB_ENTER_NOTIFY:
      pointerWindow_ = as<xcb_enter_notify_event_t>(event).event;
      break;
    case XCB_LEAVE_NOTIFY:
      if (as<xcb_leave_notify_event_t>(event).event == pointerWindow_) {
        pointerWindow_ = XCB_WINDOW_NONE;
      }
      break;
    case XCB_FOCUS_IN: {
      // The focus that follows the pointer is ignored: it ends without an event when the pointer
      // leaves.
      const auto& in = as<xcb_focus_in_event_t>(event);
      if (in.detail != XCB_NOTIFY_DETAIL_POINTER) focusWindow_ = in.event;
      break;
    }
    case XCB_FOCUS_OUT: {
      const auto& out = as<xcb_focus_out_event_t>(event);
      if (out.event == focusWindow_ && out.detail != XCB_NOTIFY_DETAIL_INFERIOR) {
        focusWindow_ = XCB_WINDOW_NONE;
      }
      break;
    }
    case XCB_UNMAP_NOTIFY:
      leave(as<xcb_unmap_notify_event_t>(event).window);
      break;
    case XCB_DESTROY_NOTIFY:
      windows_.erase(as<xcb_destroy_notify_event_t>(event).window);
      leave(as<xcb_destroy_notify_event_t>(event).window);
      break;
    default:
      break;
  }
}

}  // namespace vembrix
