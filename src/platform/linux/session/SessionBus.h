#pragma once

#include <QDBusConnection>
#include <optional>

namespace vembrix {

/// Returns the session's message bus; empty where none is announced or none answers, for which the
/// D-Bus library would start one for this program alone. Main thread; before Qt's event loop runs
/// for the first time.
std::optional<QDBusConnection> sessionBus();

/// Returns the system's message bus; empty where there is none. Main thread.
std::optional<QDBusConnection> systemBus();

}  // namespace vembrix
