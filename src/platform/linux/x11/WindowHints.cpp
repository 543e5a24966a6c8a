#include "platform/linux/x11/WindowHints.h"

#include <QByteArray>
#include <QPoint>
#include <QString>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

xcb_window_t nativeId(QWindow& window) {
  return static_cast<xcb_window_t>(window.winId());
}

void setCardinals(const xcb_ewmh_connection_t& ewmh, xcb_window_t window, xcb_atom_t name,
                  std::span<const std::uint32_t> values) {
  xcb_change_property(ewmh.connection, XCB_PROP_MODE_REPLACE, window, name, XCB_ATOM_CARDINAL, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

/// Returns whether the window manager lists the window.
bool isListed(xcb_ewmh_connection_t& ewmh, xcb_get_property_cookie_t cookie, xcb_window_t window) {
  xcb_ewmh_get_windows_reply_t reply{};
  if (xcb_ewmh_get_client_list_reply(&ewmh, cookie, &reply, nullptr) == 0) return false;
  const std::span clients(reply.windows, reply.windows_len);
  const bool found = std::ranges::find(clients, window) != clients.end();
  xcb_ewmh_get_windows_reply_wipe(&reply);
  return found;
}

}  // namespace

std::array<xcb_atom_t, 3> dockStates(const xcb_ewmh_connection_t& atoms) {
  return {atoms._NET_WM_STATE_STICKY, atoms._NET_WM_STATE_SKIP_TASKBAR,
          atoms._NET_WM_STATE_SKIP_PAGER};
}

void makeDock(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Replaces Qt's list, whose first types belong to no standard.
  xcb_ewmh_set_wm_window_type(ewmh, nativeId(window), 1, &ewmh->_NET_WM_WINDOW_TYPE_DOCK);
  xcb_ewmh_set_wm_desktop(ewmh, nativeId(window), kAllDesktops);
  // Qt adds its own states to these.
  auto states = dockStates(*ewmh);
  xcb_ewmh_set_wm_state(ewmh, nativeId(window), states.size(), states.data());
}

void restoreDock(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  const xcb_window_t id = nativeId(window);
  xcb_ewmh_set_wm_window_type(ewmh, id, 1, &ewmh->_NET_WM_WINDOW_TYPE_DOCK);
  // The other states of a visible window belong to the window manager.
  constexpr auto kSource = XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL;
  xcb_ewmh_request_change_wm_desktop(ewmh, 0, id, kAllDesktops, kSource);
  for (const xcb_atom_t state : dockStates(*ewmh)) {
    xcb_ewmh_request_change_wm_state(ewmh, 0, id, XCB_EWMH_WM_STATE_ADD, state, XCB_ATOM_NONE,
                                     kSource);
  }
}

void makeDialog(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Qt's flag for dialogs would make it a transient of a window that is never shown.
  std::array types = {ewmh->_NET_WM_WINDOW_TYPE_DIALOG, ewmh->_NET_WM_WINDOW_TYPE_NORMAL};
  xcb_ewmh_set_wm_window_type(ewmh, nativeId(window), types.size(), types.data());
}

void hideFromTaskLists(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Qt adds its own states to these.
  std::array states = {ewmh->_NET_WM_STATE_SKIP_TASKBAR, ewmh->_NET_WM_STATE_SKIP_PAGER};
  xcb_ewmh_set_wm_state(ewmh, nativeId(window), states.size(), states.data());
}

QPoint originInPixels(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return {};
  const auto cookie = xcb_translate_coordinates_unchecked(ewmh->connection, nativeId(window),
                                                          ewmh->screens[0]->root, 0, 0);
  const XcbPtr<xcb_translate_coordinates_reply_t> corner{
      xcb_translate_coordinates_reply(ewmh->connection, cookie, nullptr)};
  return corner ? QPoint(corner->dst_x, corner->dst_y) : QPoint();
}

bool isManaged(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return false;
  const auto listed = xcb_ewmh_get_client_list_unchecked(ewmh, 0);
  const auto asked = xcb_query_tree_unchecked(ewmh->connection, nativeId(window));
  const XcbPtr<xcb_query_tree_reply_t> tree{xcb_query_tree_reply(ewmh->connection, asked, nullptr)};
  const bool isFramed = tree && tree->parent != tree->root;
  return isListed(*ewmh, listed, nativeId(window)) || isFramed;
}

void setName(QWindow& window, const QString& name) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) {
    window.setTitle(name);
    return;
  }
  // Qt would send the two properties separately, which wakes the program twice.
  const QByteArray text = name.toUtf8();
  for (const xcb_atom_t property : {xcb_atom_t{XCB_ATOM_WM_NAME}, ewmh->_NET_WM_NAME}) {
    xcb_change_property(ewmh->connection, XCB_PROP_MODE_REPLACE, nativeId(window), property,
                        ewmh->UTF8_STRING, 8, static_cast<std::uint32_t>(text.size()),
                        text.constData());
  }
}

void updateUserTime(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Every change of a property causes an event with the server's time, even an empty one.
  xcb_change_property(ewmh->connection, XCB_PROP_MODE_APPEND, nativeId(window), ewmh->_NET_WM_PID,
                      XCB_ATOM_CARDINAL, 32, 0, nullptr);
  xcb_flush(ewmh->connection);
}

void setStrut(QWindow& window, const Strut& strut) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Some window managers know only the older property, which always covers a whole edge.
  setCardinals(*ewmh, nativeId(window), ewmh->_NET_WM_STRUT, std::span(strut).first<4>());
  setCardinals(*ewmh, nativeId(window), ewmh->_NET_WM_STRUT_PARTIAL, strut);
}

void bringToFront(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) {
    window.raise();
    window.requestActivate();
    return;
  }
  const xcb_window_t id = nativeId(window);
  std::uint32_t desktop = 0;
  const auto current = xcb_ewmh_get_current_desktop_unchecked(ewmh, 0);
  if (xcb_ewmh_get_current_desktop_reply(ewmh, current, &desktop, nullptr) != 0) {
    xcb_ewmh_request_change_wm_desktop(ewmh, 0, id, desktop, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER);
  }
  xcb_ewmh_request_change_active_window(ewmh, 0, id, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
                                        XCB_CURRENT_TIME, XCB_WINDOW_NONE);
  xcb_flush(ewmh->connection);
}

}  // namespace vembrix
