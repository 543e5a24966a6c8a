#include "platform/linux/WindowHints.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/linux/QtEwmh.h"

namespace vembrix {
namespace {

constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;

xcb_window_t nativeId(QWindow& window) {
  return static_cast<xcb_window_t>(window.winId());
}

/// In pixels of the X server. Qt scales positions within a screen, while the
/// screens themselves keep their places.
QRect nativeGeometry(const QRect& geometry, const QScreen& screen) {
  const QPoint origin = screen.geometry().topLeft();
  const QPoint offset = (geometry.topLeft() - origin) * screen.devicePixelRatio();
  return {origin + offset, geometry.size() * screen.devicePixelRatio()};
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

bool hasCompositor() {
  auto* ewmh = ewmhOfQt();
  // Windows that are not on an X server are put together by whoever shows them.
  if (!ewmh) return true;
  constexpr int kScreen = 0;
  xcb_window_t owner = XCB_WINDOW_NONE;
  const auto cookie = xcb_ewmh_get_wm_cm_owner_unchecked(ewmh, kScreen);
  return xcb_ewmh_get_wm_cm_owner_reply(ewmh, cookie, &owner, nullptr) != 0 &&
         owner != XCB_WINDOW_NONE;
}

}  // namespace vembrix
