#include "platform/linux/ActiveWindow.h"

#include "platform/linux/QtEwmh.h"
#include "platform/linux/X11Connection.h"

namespace vembrix {

std::optional<QPoint> activeWindowCenter() {
  xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (!ewmh || ewmh->nb_screens == 0) return std::nullopt;
  xcb_connection_t* xcb = ewmh->connection;
  xcb_window_t window = XCB_WINDOW_NONE;
  const auto active = xcb_ewmh_get_active_window_unchecked(ewmh, 0);
  const bool told = xcb_ewmh_get_active_window_reply(ewmh, active, &window, nullptr) != 0;
  if (!told || window == XCB_WINDOW_NONE) return std::nullopt;

  const auto geometry = xcb_get_geometry_unchecked(xcb, window);
  const auto place = xcb_translate_coordinates_unchecked(xcb, window, ewmh->screens[0]->root, 0, 0);
  const XcbPtr<xcb_get_geometry_reply_t> size{xcb_get_geometry_reply(xcb, geometry, nullptr)};
  const XcbPtr<xcb_translate_coordinates_reply_t> corner{
      xcb_translate_coordinates_reply(xcb, place, nullptr)};
  if (!size || !corner) return std::nullopt;
  return QPoint(corner->dst_x + size->width / 2, corner->dst_y + size->height / 2);
}

}  // namespace vembrix
