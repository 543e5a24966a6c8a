#pragma once

namespace vembrix {

/// The whole run of the program: migrates settings, makes the application an
/// accessory, gives it the delegate and runs its event loop. Main thread, once.
/// The process's exit status.
int runVembrix();

}  // namespace vembrix
