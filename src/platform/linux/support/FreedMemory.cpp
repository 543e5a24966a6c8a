#include "platform/linux/support/FreedMemory.h"

#include <malloc.h>

namespace vembrix {

void returnFreedMemory() {
  // The library raises its own limits after a few large blocks, and then keeps them.
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);
  mallopt(M_TRIM_THRESHOLD, 64 * 1024);
}

}  // namespace vembrix
