#pragma once

#include <QDBusConnection>
#include <optional>

namespace vembrix {

/// Returns the session's message bus; empty if none is announced or none answers, in which case the
/// D-Bus library would start one for this program alone. Main thread; before Qt's event loop runs
/// for the first time.
std::optional<QDBusConnection> sessionBus();

/// Returns the system's message bus; empty if there is none. Main thread.
std::optional<QDBusConnection> systemBus();

}  // namespace vembrix
