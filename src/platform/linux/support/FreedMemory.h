#pragma once

namespace vembrix {

/// Makes the C library return large freed blocks, such as short-lived pictures, to the system at
/// once. To be called before the first of them.
void returnFreedMemory();

}  // namespace vembrix
