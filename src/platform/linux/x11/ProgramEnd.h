#pragma once

#include <string_view>

namespace vembrix {

/// Stores all settings, logs the message as one line and ends the process with a failure status.
/// Runs no destructors, as the X server and Qt's threads may be unusable. Any thread.
[[noreturn]] void endProgram(std::string_view message);

}  // namespace vembrix
