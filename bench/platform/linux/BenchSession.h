#pragma once

namespace vembrix {

/// Selects empty settings and the desktop in the process. QT_QPA_PLATFORM chooses the display for
/// windows. To be called before anything of the platform is used; further calls have no effect.
void useBenchSession();

}  // namespace vembrix
