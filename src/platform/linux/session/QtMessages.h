#pragma once

namespace vembrix {

/// Sends Qt's messages to the system's log, one line each, in place of Qt's own output; a broken
/// connection to the X server ends the program. Process-wide, any thread.
void handleQtMessages();

}  // namespace vembrix
