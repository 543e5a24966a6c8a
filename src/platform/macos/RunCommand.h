#pragma once

#include "platform/LogTool.h"

namespace vembrix {

/// Runs the command with one pipe for both outputs and nothing to read, reads that to its
/// end and waits for it to exit. Any thread but the main one.
LogTool::Result runCommand(const LogCommand& command);

}  // namespace vembrix
