#include "platform/linux/ClickThroughFrames.h"

#include <xcb/xfixes.h>

#include <QCoreApplication>
#include <cstdint>

#include "platform/linux/QtEwmh.h"
#include "platform/linux/X11Connection.h"

namespace vembrix {
namespace {

/// Of the shape extension, which needs no library of its own for a number.
constexpr xcb_shape_kind_t kInputShape = 2;

xcb_connection_t* connectionOfQt() {
  return ewmhOfQt()->connection;
}

/// The window, if it has one between itself and the root, and all above that.
std::vector<xcb_window_t> framesFrom(xcb_window_t window) {
  std::vector<xcb_window_t> frames;
  while (true) {
    const XcbPtr<xcb_query_tree_reply_t> tree{xcb_query_tree_reply(
        connectionOfQt(), xcb_query_tree_unchecked(connectionOfQt(), window), nullptr)};
    // No answer: the window manager has gone or taken it away.
    if (!tree || window == tree->root) return frames;
    frames.push_back(window);
    window = tree->parent;
  }
}

void letThrough(const std::vector<xcb_window_t>& frames) {
  if (frames.empty()) return;
  xcb_connection_t* connection = connectionOfQt();
  const xcb_xfixes_region_t nothing = xcb_generate_id(connection);
  xcb_xfixes_create_region(connection, nothing, 0, nullptr);
  for (const xcb_window_t frame : frames) {
    xcb_xfixes_set_window_shape_region(connection, frame, kInputShape, 0, 0, nothing);
  }
  xcb_xfixes_destroy_region(connection, nothing);
  xcb_flush(connection);
}

}  // namespace

ClickThroughFrames& ClickThroughFrames::shared() {
  // Never destroyed: Qt, which feeds it, is not either.
  static auto& frames = *new ClickThroughFrames;
  return frames;
}

ClickThroughFrames::ClickThroughFrames() {
  QCoreApplication::instance()->installNativeEventFilter(this);
}

void ClickThroughFrames::add(xcb_window_t window) {
  frames_.try_emplace(window);
}

void ClickThroughFrames::remove(xcb_window_t window) {
  frames_.erase(window);
}

bool ClickThroughFrames::nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                                           qintptr* /*result*/) {
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  switch (eventType(*event)) {
    case XCB_REPARENT_NOTIFY: {
      const auto& change = reinterpret_cast<const xcb_reparent_notify_event_t&>(*event);
      const auto found = frames_.find(change.window);
      if (found == frames_.end()) break;
      found->second = framesFrom(change.parent);
      letThrough(found->second);
      break;
    }
    case XCB_CONFIGURE_NOTIFY: {
      // Where the window manager has given the frame another size, and a region with it.
      const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(*event);
      if (const auto found = frames_.find(change.window); found != frames_.end()) {
        letThrough(found->second);
      }
      break;
    }
    default:
      break;
  }
  return false;
}

}  // namespace vembrix
