#pragma once

#include <cstddef>

namespace vembrix {

/// How often this process has allocated memory with operator new so far, on all
/// threads.
std::size_t allocationCount();

}  // namespace vembrix
