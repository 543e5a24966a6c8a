#include "platform/linux/SessionBus.h"

#include <QFileInfo>
#include <QString>

namespace vembrix {
namespace {

bool isSessionBusAnnounced() {
  if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return !runtime.isEmpty() && QFileInfo::exists(runtime + QLatin1String("/bus"));
}

std::optional<QDBusConnection> connected(const QDBusConnection& bus) {
  return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

}  // namespace

std::optional<QDBusConnection> sessionBus() {
  return isSessionBusAnnounced() ? connected(QDBusConnection::sessionBus()) : std::nullopt;
}

std::optional<QDBusConnection> systemBus() {
  return connected(QDBusConnection::systemBus());
}

}  // namespace vembrix
