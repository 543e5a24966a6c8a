#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/LogTool.h"

namespace vembrix {

/// The way in which the platform runs its log's tool, with a tool of the test's own.
class LogToolUnderTest {
 public:
  static std::unique_ptr<LogToolUnderTest> create();

  virtual ~LogToolUnderTest() = default;

  /// Makes the tool a script of sh, which has the arguments as "$@".
  virtual void becomeScript(const std::string& script) = 0;
  /// The tool's file is there, but may not be run.
  virtual void forbid() = 0;
  /// There is no tool.
  virtual void vanish() = 0;

  [[nodiscard]] virtual std::vector<std::string> arguments() const = 0;
  /// Not on the main thread.
  [[nodiscard]] virtual LogTool::Result run() const = 0;
};

}  // namespace vembrix
