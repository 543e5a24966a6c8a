#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/LogTool.h"

namespace vembrix {

/// Runs a tool of the test in the way in which the platform runs its log tool.
class LogToolUnderTest {
 public:
  static std::unique_ptr<LogToolUnderTest> create();

  virtual ~LogToolUnderTest() = default;

  /// Makes the tool a script of sh, which has the arguments as "$@".
  virtual void becomeScript(const std::string& script) = 0;
  /// Makes the tool's file exist without the permission to run it.
  virtual void forbid() = 0;
  /// Removes the tool.
  virtual void vanish() = 0;

  [[nodiscard]] virtual std::vector<std::string> arguments() const = 0;
  /// Not to be called on the main thread.
  [[nodiscard]] virtual LogTool::Result run() const = 0;
};

}  // namespace vembrix
