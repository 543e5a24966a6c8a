#pragma once

#include <functional>

#include "platform/NotificationCenter.h"

namespace vembrix {

/// Calls the handler on the main queue soon after the user has changed which programs
/// may watch and post input, be it this one or another, until the token is dropped.
/// Main thread.
[[nodiscard]] Observation observeTrust(std::function<void()> handler);

}  // namespace vembrix
