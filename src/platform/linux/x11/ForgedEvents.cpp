#include "platform/linux/x11/ForgedEvents.h"

#include <QGuiApplication>
#include <QScreen>

namespace vembrix {
namespace {

constexpr unsigned kSentByClient = 0x80;

/// Returns whether the size is plausible: at most twice that of all screens together, as windows
/// may be larger than a screen.
bool fitsOnScreens(const xcb_configure_notify_event_t& event) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (!screen) return true;
  const QSizeF room = QSizeF(screen->virtualSize()) * screen->devicePixelRatio() * 2;
  return event.width <= room.width() && event.height <= room.height();
}

}  // namespace

bool isForged(const xcb_generic_event_t& event) {
  if ((event.response_type & kSentByClient) == 0) return false;
  switch (event.response_type & ~kSentByClient) {
    case XCB_CLIENT_MESSAGE:
    case XCB_SELECTION_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
      return false;
    default:
      return true;
  }
}

ForgedEventFilter::ForgedEventFilter() {
  QCoreApplication::instance()->installNativeEventFilter(this);
}

ForgedEventFilter::~ForgedEventFilter() {
  if (QCoreApplication* application = QCoreApplication::instance()) {
    application->removeNativeEventFilter(this);
  }
}

bool ForgedEventFilter::nativeEventFilter(const QByteArray& eventType, void* message,
                                          qintptr* /*result*/) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if (isForged(event)) return true;
  const bool isPlace = event.response_type == (XCB_CONFIGURE_NOTIFY | kSentByClient);
  return isPlace && !fitsOnScreens(*static_cast<const xcb_configure_notify_event_t*>(message));
}

}  // namespace vembrix
