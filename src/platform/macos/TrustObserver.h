#pragma once

#include <functional>

#include "platform/NotificationCenter.h"

namespace vembrix {

/// Calls the handler on the main queue soon after the user has changed the permission for
/// Accessibility of any program, until the token is dropped. Main thread.
[[nodiscard]] Observation observeTrust(std::function<void()> handler);

}  // namespace vembrix
