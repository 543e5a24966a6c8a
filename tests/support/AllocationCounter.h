#pragma once

#include <cstddef>

namespace vembrix {

/// Returns the number of allocations with operator new by all threads of this process so far.
std::size_t allocationCount();

}  // namespace vembrix
