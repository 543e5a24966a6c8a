#include "platform/embedded/services/EmbeddedLogTool.h"

namespace vembrix {

EmbeddedLogTool& EmbeddedLogTool::shared() {
  static EmbeddedLogTool tool;
  return tool;
}

EmbeddedLogTool::EmbeddedLogTool()
    : command_{.executable = "/usr/bin/log",
               .arguments = {"show", "--predicate", R"(process == "Vembrix")", "--last", "10m",
                             "--style", "compact"},
               .shellText =
                   R"(log show --predicate 'process == "Vembrix"' --last 10m --style compact)"},
      script_([] { return Output{}; }) {}

LogTool::Result EmbeddedLogTool::run() const {
  Script script;
  {
    const std::lock_guard lock(mutex_);
    script = script_;
  }
  return script();
}

void EmbeddedLogTool::setScript(Script script) {
  const std::lock_guard lock(mutex_);
  script_ = std::move(script);
}

}  // namespace vembrix
