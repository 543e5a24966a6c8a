#pragma once

#include <QDBusConnection>
#include <optional>

namespace vembrix {

/// The session's message bus; nothing where there is none. Asks only where one
/// is announced, since the D-Bus library otherwise starts a bus of its own that
/// outlives the program. Main thread.
std::optional<QDBusConnection> sessionBus();

/// The system's message bus; nothing where there is none. Main thread.
std::optional<QDBusConnection> systemBus();

}  // namespace vembrix
