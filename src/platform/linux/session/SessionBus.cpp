#include "platform/linux/session/SessionBus.h"

#include <QFileInfo>
#include <QString>
#include <mutex>

namespace vembrix {
namespace {

constexpr const char* kSessionAddress = "DBUS_SESSION_BUS_ADDRESS";

bool isSessionBusAnnounced() {
  if (!qEnvironmentVariableIsEmpty(kSessionAddress)) return true;
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return !runtime.isEmpty() && QFileInfo::exists(runtime + QLatin1String("/bus"));
}

/// Makes Qt do without a session bus for the life of the process. Qt asks for one by itself, too,
/// for screen readers, and keeps the first answer.
void settleForNoSessionBus() {
  qputenv(kSessionAddress, "disabled:");
  QDBusConnection::sessionBus();
  // Programs that are started from here shall decide for themselves.
  qunsetenv(kSessionAddress);
}

std::optional<QDBusConnection> connected(const QDBusConnection& bus) {
  return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

}  // namespace

std::optional<QDBusConnection> sessionBus() {
  static const bool isAnnounced = isSessionBusAnnounced();
  if (isAnnounced) return connected(QDBusConnection::sessionBus());
  static std::once_flag settled;
  std::call_once(settled, settleForNoSessionBus);
  return std::nullopt;
}

std::optional<QDBusConnection> systemBus() {
  return connected(QDBusConnection::systemBus());
}

}  // namespace vembrix
