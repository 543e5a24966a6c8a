#pragma once

#include <chrono>
#include <functional>

#include "platform/MainQueue.h"

namespace vembrix {

/// Lets the main run loop run for that long.
void runFor(Duration duration);

/// Lets the main run loop run until the condition holds, a few seconds at most. Whether
/// it came to hold.
bool runUntil(const std::function<bool()>& condition, Duration limit = std::chrono::seconds(10));

}  // namespace vembrix
