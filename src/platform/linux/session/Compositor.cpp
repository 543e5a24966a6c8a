#include "platform/linux/session/Compositor.h"

#include <xcb/xfixes.h>

#include <QBitmap>
#include <QCoreApplication>
#include <QPainter>
#include <utility>

#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

constexpr int kScreen = 0;

bool hasCompositor(xcb_ewmh_connection_t& ewmh) {
  xcb_window_t owner = XCB_WINDOW_NONE;
  const auto cookie = xcb_ewmh_get_wm_cm_owner_unchecked(&ewmh, kScreen);
  return xcb_ewmh_get_wm_cm_owner_reply(&ewmh, cookie, &owner, nullptr) != 0 &&
         owner != XCB_WINDOW_NONE;
}

}  // namespace

Compositor& Compositor::shared() {
  // Never destroyed, because Qt, which calls it, is not either.
  static auto& compositor = *new Compositor;
  return compositor;
}

Compositor::Compositor() {
  xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (!ewmh) return;
  xcb_connection_t* xcb = ewmh->connection;
  const auto* extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
  if (extension && extension->present != 0) {
    // The server accepts requests only from clients that have stated their version.
    const XcbPtr<xcb_xfixes_query_version_reply_t> version{xcb_xfixes_query_version_reply(
        xcb,
        xcb_xfixes_query_version_unchecked(xcb, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr)};
    selectionEvent_ = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    // Selected before the first query, so that no change is missed.
    xcb_xfixes_select_selection_input(xcb, ewmh->screens[kScreen]->root,
                                      ewmh->_NET_WM_CM_Sn[kScreen],
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    QCoreApplication::instance()->installNativeEventFilter(this);
  }
  isRunning_ = hasCompositor(*ewmh);
}

bool Compositor::nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                                   qintptr* /*result*/) {
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  if (eventType(*event) != selectionEvent_) return false;
  const auto& told = as<xcb_xfixes_selection_notify_event_t>(*event);
  if (told.selection != ewmhOfQt()->_NET_WM_CM_Sn[kScreen]) return false;
  const bool isRunning = told.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER &&
                         told.owner != XCB_WINDOW_NONE;
  if (std::exchange(isRunning_, isRunning) != isRunning) Q_EMIT changed();
  return false;
}

QRegion roundedShape(const QRectF& rect, qreal radius) {
  const QRect bounds = rect.toAlignedRect();
  QBitmap mask(bounds.size());
  mask.clear();
  // Its pixels are those whose centres are inside: a polygon would show its corners.
  QPainter painter(&mask);
  painter.translate(-bounds.topLeft());
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::color1);
  painter.drawRoundedRect(rect, radius, radius);
  painter.end();
  return QRegion(mask).translated(bounds.topLeft());
}

}  // namespace vembrix
