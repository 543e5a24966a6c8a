#pragma once

namespace vembrix {

/// Makes the next query of the screens ask the system again. The default notification center calls
/// it before all observers, so that they see the new screens. Main thread.
void invalidateScreenCache();

}  // namespace vembrix
