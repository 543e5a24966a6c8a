#pragma once

#include <QDBusConnection>
#include <optional>

namespace vembrix {

/// The session's message bus; nothing where none is announced or none answers.
/// Otherwise the D-Bus library would start one of its own, for the program
/// alone. Main thread; before Qt's event loop runs for the first time.
std::optional<QDBusConnection> sessionBus();

/// The system's message bus; nothing where there is none. Main thread.
std::optional<QDBusConnection> systemBus();

}  // namespace vembrix
