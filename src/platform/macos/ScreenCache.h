#pragma once

namespace vembrix {

/// The screens have changed: the next question about them asks the system anew.
/// The default notification center calls it before it tells anybody else, so that
/// every observer of the change finds the screens as they are now. Main thread.
void invalidateScreenCache();

}  // namespace vembrix
