#pragma once

namespace vembrix {

/// Settings that are nobody's, and no desktop but the one in the process. Which
/// display the windows are on, QT_QPA_PLATFORM says. To be called before anything
/// of the platform is used; more often does no harm.
void useBenchSession();

}  // namespace vembrix
