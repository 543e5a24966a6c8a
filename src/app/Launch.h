#pragma once

#include <span>

namespace vembrix {

/// The whole run of the program: migrates settings, makes the application an
/// accessory, gives it the delegate and runs its event loop. Main thread, once.
/// The process's exit status. `arguments`: the command line, the program's own path
/// first; those that mean nothing are ignored.
int runVembrix(std::span<const char* const> arguments);

}  // namespace vembrix
