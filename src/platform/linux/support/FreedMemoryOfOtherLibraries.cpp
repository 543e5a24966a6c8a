// C libraries without mallopt(), such as musl, return large blocks without being asked.

#include "platform/linux/support/FreedMemory.h"

namespace vembrix {

void returnFreedMemory() {}

}  // namespace vembrix
