#pragma once

#include <functional>
#include <mutex>
#include <utility>

#include "platform/LogTool.h"

namespace vembrix {

/// A log tool that a test scripts; initially its output is empty. Its command is that of macOS.
class EmbeddedLogTool : public LogTool {
 public:
  using Script = std::function<Result()>;

  /// The tool behind LogTool::shared().
  static EmbeddedLogTool& shared();

  const LogCommand& command() const override { return command_; }
  Result run() const override;

  /// Sets what returns the result of a run. Called on the thread of the run.
  void setScript(Script script);

 private:
  EmbeddedLogTool();

  LogCommand command_;
  mutable std::mutex mutex_;
  Script script_;
};

}  // namespace vembrix
