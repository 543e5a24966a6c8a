#pragma once

#include <string>
#include <vector>

namespace vembrix {

/// Returns what this process has sent to the system's log, oldest first. In a program that calls
/// this, the lines do not reach the log.
std::vector<std::string> sentLines();

/// Returns the identifier of these lines.
std::string logIdentifier();

}  // namespace vembrix
