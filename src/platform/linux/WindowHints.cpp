#include "platform/linux/WindowHints.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/linux/QtEwmh.h"
#include "platform/linux/X11Connection.h"

namespace vembrix {
namespace {

constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;

xcb_window_t nativeId(QWindow& window) {
  return static_cast<xcb_window_t>(window.winId());
}

/// Asks the X server: once for each name is enough.
xcb_atom_t atomOfQt(const xcb_ewmh_connection_t& ewmh, std::string_view name) {
  const XcbPtr<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
      ewmh.connection,
      xcb_intern_atom_unchecked(ewmh.connection, 0, static_cast<std::uint16_t>(name.size()),
                                name.data()),
      nullptr)};
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void setCardinals(const xcb_ewmh_connection_t& ewmh, xcb_window_t window, xcb_atom_t name,
                  std::span<const std::uint32_t> values) {
  xcb_change_property(ewmh.connection, XCB_PROP_MODE_REPLACE, window, name, XCB_ATOM_CARDINAL, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
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

void hideFromSwitchers(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  // Beside the standard's two, which say nothing of switching.
  static const xcb_atom_t skipSwitcher = atomOfQt(*ewmh, "_KDE_NET_WM_STATE_SKIP_SWITCHER");
  std::array states = {ewmh->_NET_WM_STATE_SKIP_TASKBAR, ewmh->_NET_WM_STATE_SKIP_PAGER,
                       skipSwitcher};
  xcb_ewmh_set_wm_state(ewmh, nativeId(window), states.size(), states.data());
}

void announceOwnShadow(QWindow& window, int extent) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  static const xcb_atom_t shadow = atomOfQt(*ewmh, "_COMPTON_SHADOW");
  static const xcb_atom_t frameExtents = atomOfQt(*ewmh, "_GTK_FRAME_EXTENTS");
  constexpr std::uint32_t kNone = 0;
  setCardinals(*ewmh, nativeId(window), shadow, std::span(&kNone, 1));
  std::array<std::uint32_t, 4> extents{};
  extents.fill(static_cast<std::uint32_t>(std::lround(extent * window.devicePixelRatio())));
  setCardinals(*ewmh, nativeId(window), frameExtents, extents);
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
