#pragma once

#include <QPoint>
#include <optional>

namespace vembrix {

/// The centre of the window that has the user's attention, whosever it is, in
/// pixels of the X server; nothing where there is none or nobody tells. Asks the
/// X server and waits for its answer. Main thread; needs a Qt application.
std::optional<QPoint> activeWindowCenter();

}  // namespace vembrix
