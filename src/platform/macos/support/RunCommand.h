#pragma once

#include "platform/LogTool.h"

namespace vembrix {

/// Runs the command with empty input and one pipe for both outputs, and blocks until it has exited.
/// Any thread but the main one.
LogTool::Result runCommand(const LogCommand& command);

}  // namespace vembrix
