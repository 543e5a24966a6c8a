#pragma once

#include "platform/LogTool.h"

namespace vembrix {

/// Returns the command that prints this program's lines of the unified log, selected by the
/// process's name. Any thread.
inline LogCommand unifiedLogCommand() {
  return {.executable = "/usr/bin/log",
          .arguments = {"show", "--predicate", "process == \"Vembrix\"", "--last", "10m", "--style",
                        "compact"},
          .shellText = "log show --predicate 'process == \"Vembrix\"' --last 10m --style compact"};
}

}  // namespace vembrix
