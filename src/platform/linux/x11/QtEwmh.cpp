#include "platform/linux/x11/QtEwmh.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QLatin1String>
#include <QString>
#include <cstdint>

#include "platform/linux/x11/X11Connection.h"

namespace vembrix {

xcb_ewmh_connection_t* ewmhOfQt() {
  static xcb_ewmh_connection_t* const ewmh = []() -> xcb_ewmh_connection_t* {
    // The offscreen platform has this interface without a connection.
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return nullptr;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection()) return nullptr;
    static xcb_ewmh_connection_t connection{};
    auto* cookies = xcb_ewmh_init_atoms(x11->connection(), &connection);
    const bool ready = xcb_ewmh_init_atoms_replies(&connection, cookies, nullptr) != 0;
    if (!ready) return nullptr;
    // Qt sends buffered requests only when it reads events or paints. A timer that moves a window
    // causes neither.
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     qGuiApp, [] { xcb_flush(connection.connection); });
    return &connection;
  }();
  return ewmh;
}

xcb_atom_t atomOfQt(std::string_view name) {
  xcb_connection_t* xcb = ewmhOfQt()->connection;
  const auto length = static_cast<std::uint16_t>(name.size());
  const XcbPtr<xcb_intern_atom_reply_t> reply{
      xcb_intern_atom_reply(xcb, xcb_intern_atom_unchecked(xcb, 0, length, name.data()), nullptr)};
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace vembrix
