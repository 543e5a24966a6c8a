#pragma once

#include "platform/LogTool.h"

namespace vembrix {

/// How this program's lines are had from the unified log. The predicate is by the
/// process's name, which the bundle gives it. Any thread.
inline LogCommand unifiedLogCommand() {
  return {.executable = "/usr/bin/log",
          .arguments = {"show", "--predicate", "process == \"Vembrix\"", "--last", "10m", "--style",
                        "compact"},
          .shellText = "log show --predicate 'process == \"Vembrix\"' --last 10m --style compact"};
}

}  // namespace vembrix
