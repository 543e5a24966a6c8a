#pragma once

#include <string_view>

namespace vembrix {

/// Ends the process with a failure status and the message as its one line in
/// the log, with all settings stored, without running any destructor: what they would reach (the X
/// server, Qt's threads) is not in a state to be reached. Any thread.
[[noreturn]] void endProgram(std::string_view message);

}  // namespace vembrix
