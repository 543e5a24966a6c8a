#pragma once

#include <chrono>
#include <functional>

#include "platform/MainQueue.h"

namespace vembrix {

/// Lets the main run loop run for that long.
void runFor(Duration duration);

/// Lets the main run loop run until the condition holds, at most for as long as a busy machine may
/// need. Returns whether it held.
bool runUntil(const std::function<bool()>& condition, Duration limit = std::chrono::seconds(30));

}  // namespace vembrix
