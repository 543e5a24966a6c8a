#pragma once

#include <string>
#include <vector>

namespace vembrix {

/// What this process has sent to the system's log, oldest first. In a program that calls this, the
/// lines do not reach the log.
std::vector<std::string> sentLines();

/// The identifier that its lines carry.
std::string logIdentifier();

}  // namespace vembrix
