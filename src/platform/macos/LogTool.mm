#import "platform/LogTool.h"

#import "platform/macos/RunCommand.h"

namespace vembrix {
namespace {

/// The unified log's own tool. The predicate is by the process's name, which the
/// bundle gives it. Owns the command; a run owns its process and its pipe.
class SystemLogTool : public LogTool {
 public:
  const LogCommand& command() const override { return command_; }

  Result run() const override { return runCommand(command_); }

 private:
  const LogCommand command_{
      .executable = "/usr/bin/log",
      .arguments = {"show", "--predicate", "process == \"Vembrix\"", "--last", "10m", "--style",
                    "compact"},
      .shellText = "log show --predicate 'process == \"Vembrix\"' --last 10m --style compact"};
};

}  // namespace

LogTool& LogTool::shared() {
  static auto& tool = *new SystemLogTool;
  return tool;
}

}  // namespace vembrix
