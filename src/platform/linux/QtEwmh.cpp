#include "platform/linux/QtEwmh.h"

#include <QGuiApplication>

namespace vembrix {

xcb_ewmh_connection_t* ewmhOfQt() {
  static xcb_ewmh_connection_t* const ewmh = []() -> xcb_ewmh_connection_t* {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) return nullptr;
    static xcb_ewmh_connection_t connection{};
    auto* cookies = xcb_ewmh_init_atoms(x11->connection(), &connection);
    const bool ready = xcb_ewmh_init_atoms_replies(&connection, cookies, nullptr) != 0;
    return ready ? &connection : nullptr;
  }();
  return ewmh;
}

}  // namespace vembrix
