#include "platform/linux/WindowHints.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/linux/QtEwmh.h"
#include "platform/linux/ScreenCoordinates.h"

namespace vembrix {
namespace {

constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;

xcb_window_t nativeId(QWindow& window) {
  return static_cast<xcb_window_t>(window.winId());
}

/// Whether another screen lies above the window: space reserved from the top
/// edge of all screens would be taken from that one.
bool hasScreenAbove(const QRect& geometry) {
  const auto screens = QGuiApplication::screens();
  return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
    const QRect other = screen->geometry();
    return other.bottom() < geometry.top() && other.left() <= geometry.right() &&
           other.right() >= geometry.left();
  });
}

}  // namespace

void makeDock(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // In place of Qt's list, which has types of no standard before this one.
  xcb_ewmh_set_wm_window_type(ewmh, nativeId(window), 1, &ewmh->_NET_WM_WINDOW_TYPE_DOCK);
}

void showOnAllDesktops(QWindow& window) {
  if (auto* ewmh = ewmhOfQt()) xcb_ewmh_set_wm_desktop(ewmh, nativeId(window), kAllDesktops);
}

void hideFromTaskLists(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Qt adds its own states to these.
  std::array states = {ewmh->_NET_WM_STATE_SKIP_TASKBAR, ewmh->_NET_WM_STATE_SKIP_PAGER};
  xcb_ewmh_set_wm_state(ewmh, nativeId(window), states.size(), states.data());
}

void reserveTopEdge(QWindow& window, const QRect& geometry) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  xcb_ewmh_wm_strut_partial_t strut{};
  if (!hasScreenAbove(geometry)) {
    const QRect native = nativeGeometry(geometry, *window.screen());
    strut.top = static_cast<std::uint32_t>(std::max(native.bottom() + 1, 0));
    strut.top_start_x = static_cast<std::uint32_t>(std::max(native.left(), 0));
    strut.top_end_x = static_cast<std::uint32_t>(std::max(native.right(), 0));
  }
  xcb_ewmh_set_wm_strut_partial(ewmh, nativeId(window), strut);
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
