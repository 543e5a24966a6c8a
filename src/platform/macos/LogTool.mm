#import "platform/LogTool.h"

#import "platform/macos/UnifiedLogCommand.h"
#import "platform/macos/support/RunCommand.h"

namespace vembrix {
namespace {

/// Runs the unified log's own tool. Owns the command; a run owns its process and its pipe.
class SystemLogTool : public LogTool {
 public:
  const LogCommand& command() const override { return command_; }

  Result run() const override { return runCommand(command_); }

 private:
  const LogCommand command_ = unifiedLogCommand();
};

}  // namespace

LogTool& LogTool::shared() {
  static auto& tool = *new SystemLogTool;
  return tool;
}

}  // namespace vembrix
