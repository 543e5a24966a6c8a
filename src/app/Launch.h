#pragma once

#include <span>

namespace vembrix {

/// Runs the program: migrates settings, makes the application an accessory, sets its delegate and
/// runs its event loop. Main thread; to be called once. Returns the process's exit status.
/// `arguments` is the command line, beginning with the program's own path; unknown arguments are
/// ignored.
int runVembrix(std::span<const char* const> arguments);

}  // namespace vembrix
