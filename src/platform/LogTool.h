#pragma once

#include <string>
#include <variant>
#include <vector>

namespace vembrix {

/// The command that prints this program's recent log lines.
struct LogCommand {
  /// A path, or a name to look up in the user's search path.
  std::string executable;
  std::vector<std::string> arguments;
  /// The same command for a terminal.
  std::string shellText;

  bool operator==(const LogCommand&) const = default;
};

/// The system's tool that shows its log.
class LogTool {
 public:
  /// All bytes of the tool's standard output and standard error, interleaved as written.
  struct Output {
    std::string bytes;
    bool operator==(const Output&) const = default;
  };
  /// The tool could not be started; the system's localised description of the error (UTF-8).
  struct LaunchFailure {
    std::string description;
    bool operator==(const LaunchFailure&) const = default;
  };
  using Result = std::variant<Output, LaunchFailure>;

  static LogTool& shared();

  virtual ~LogTool() = default;

  /// Constant for the life of the process. Any thread.
  [[nodiscard]] virtual const LogCommand& command() const = 0;

  /// Runs the tool and blocks until it has exited, without a time-out; its exit status is ignored.
  /// Any thread but the main one.
  [[nodiscard]] virtual Result run() const = 0;
};

}  // namespace vembrix
