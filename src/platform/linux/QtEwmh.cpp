#include "platform/linux/QtEwmh.h"

#include <QGuiApplication>
#include <QLatin1String>
#include <QString>

namespace vembrix {

xcb_ewmh_connection_t* ewmhOfQt() {
  static xcb_ewmh_connection_t* const ewmh = []() -> xcb_ewmh_connection_t* {
    // The platform without a screen has the interface too, with nothing behind.
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return nullptr;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection()) return nullptr;
    static xcb_ewmh_connection_t connection{};
    auto* cookies = xcb_ewmh_init_atoms(x11->connection(), &connection);
    const bool ready = xcb_ewmh_init_atoms_replies(&connection, cookies, nullptr) != 0;
    return ready ? &connection : nullptr;
  }();
  return ewmh;
}

}  // namespace vembrix
