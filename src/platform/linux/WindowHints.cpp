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
QRect nativeGeometry(const QWindow& window) {
  const QRect geometry = window.geometry();
  const QPoint origin = window.screen()->geometry().topLeft();
  const double scale = window.devicePixelRatio();
  const auto scaled = [scale](int length) { return qRound(length * scale); };
  const QPoint offset = geometry.topLeft() - origin;
  return {origin + QPoint(scaled(offset.x()), scaled(offset.y())),
          QSize(scaled(geometry.width()), scaled(geometry.height()))};
}

/// Whether another screen lies above the window: space reserved from the top
/// edge of all screens would be taken from that one.
bool hasScreenAbove(const QWindow& window) {
  const QRect geometry = window.geometry();
  const auto screens = QGuiApplication::screens();
  return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
    const QRect other = screen->geometry();
    return other.bottom() < geometry.top() && other.left() <= geometry.right() &&
           other.right() >= geometry.left();
  });
}

}  // namespace

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

void reserveTopEdge(QWindow& window) {
  auto* ewmh = ewmhOfQt();
  if (!ewmh) return;
  xcb_ewmh_wm_strut_partial_t strut{};
  if (!hasScreenAbove(window)) {
    const QRect geometry = nativeGeometry(window);
    strut.top = static_cast<std::uint32_t>(std::max(geometry.bottom() + 1, 0));
    strut.top_start_x = static_cast<std::uint32_t>(std::max(geometry.left(), 0));
    strut.top_end_x = static_cast<std::uint32_t>(std::max(geometry.right(), 0));
  }
  xcb_ewmh_set_wm_strut_partial(ewmh, nativeId(window), strut);
}

}  // namespace vembrix
