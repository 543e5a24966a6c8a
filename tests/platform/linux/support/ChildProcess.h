#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace vembrix {

/// A program that runs beside a test and ends with it, even if the test crashes. Its output is
/// discarded.
class ChildProcess {
 public:
  struct Command {
    /// The program, looked up on the path, and its arguments.
    std::vector<std::string> words;
    /// "NAME=value", in addition to this process's environment.
    std::vector<std::string> environment;
    /// A descriptor that the program receives as kOutput; -1 for none.
    int output = -1;
  };
  static constexpr int kOutput = 3;

  explicit ChildProcess(const Command& command);
  /// Ends it by SIGTERM, or by SIGKILL after two seconds.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }
  /// Kills it, like a crash, and waits.
  void kill();
  /// Stop it, and let it continue.
  void stop() const;
  void resume() const;

 private:
  void send(int signal) const;

  pid_t pid_ = -1;
};

/// Reads a line that a program writes to the pipe; empty if the program ends first.
std::string readLine(int descriptor);

}  // namespace vembrix
