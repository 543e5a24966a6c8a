#pragma once

#include <string>
#include <variant>
#include <vector>

namespace vembrix {

/// How this program's recent log lines are had from the system.
struct LogCommand {
  /// A path, or a name to be looked for where the user's programs are.
  std::string executable;
  std::vector<std::string> arguments;
  /// The same for a user to type into a terminal.
  std::string shellText;

  bool operator==(const LogCommand&) const = default;
};

/// The system's tool that shows its log.
class LogTool {
 public:
  /// All bytes of its standard output and standard error, as they came.
  struct Output {
    std::string bytes;
    bool operator==(const Output&) const = default;
  };
  /// It could not be started; the error in the user's words (UTF-8).
  struct LaunchFailure {
    std::string description;
    bool operator==(const LaunchFailure&) const = default;
  };
  using Result = std::variant<Output, LaunchFailure>;

  static LogTool& shared();

  virtual ~LogTool() = default;

  /// The same as long as the process lives. Any thread.
  [[nodiscard]] virtual const LogCommand& command() const = 0;

  /// Runs it with one pipe for both outputs, reads that to its end and waits for
  /// the tool to exit, however long that takes; its exit status does not count.
  /// Any thread but the main one.
  [[nodiscard]] virtual Result run() const = 0;
};

}  // namespace vembrix
