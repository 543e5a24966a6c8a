#include "platform/LogTool.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include "platform/linux/support/Descriptor.h"

namespace vembrix {
namespace {

LogTool::LaunchFailure failureOf(const std::string& executable, int error) {
  return {executable + ": " + std::generic_category().message(error)};
}

/// The options for starting the child: no input, both outputs to `output`, and the usual signal
/// handling.
class SpawnOptions {
 public:
  explicit SpawnOptions(int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, output, STDERR_FILENO);
    posix_spawnattr_init(&attributes_);
    sigset_t ignoredHere;
    sigemptyset(&ignoredHere);
    sigaddset(&ignoredHere, SIGPIPE);
    sigaddset(&ignoredHere, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes_, &ignoredHere);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }
  ~SpawnOptions() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnOptions(const SpawnOptions&) = delete;
  SpawnOptions& operator=(const SpawnOptions&) = delete;

  [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }
  [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

/// Returns 0, or the error if the child could not be started.
int spawn(const LogCommand& command, int output, pid_t& child) {
  std::string executable = command.executable;
  std::vector<std::string> arguments = command.arguments;
  std::vector<char*> words{executable.data()};
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  const SpawnOptions options(output);
  return posix_spawnp(&child, executable.c_str(), options.actions(), options.attributes(),
                      words.data(), environ);
}

std::string readToEnd(int input) {
  std::string bytes;
  std::array<char, 65536> buffer{};
  while (true) {
    const ssize_t count = read(input, buffer.data(), buffer.size());
    if (count > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      return bytes;
    }
  }
}

class Journal : public LogTool {
 public:
  [[nodiscard]] const LogCommand& command() const override { return command_; }

  [[nodiscard]] Result run() const override {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return failureOf(command_.executable, errno);
    const Descriptor input(ends[0]);
    Descriptor output(ends[1]);
    pid_t child = 0;
    if (const int error = spawn(command_, output.number(), child)) {
      return failureOf(command_.executable, error);
    }
    // While this end is open, reading would never reach the end.
    output.close();
    Output result{readToEnd(input.number())};
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return result;
  }

 private:
  const LogCommand command_{
      .executable = "journalctl",
      .arguments = {"--identifier=Vembrix", "--since=-10min", "--output=short-iso"},
      .shellText = "journalctl --identifier=Vembrix --since=-10min --output=short-iso"};
};

}  // namespace

LogTool& LogTool::shared() {
  // Never destroyed: it may run until the very end.
  static auto& tool = *new Journal;
  return tool;
}

}  // namespace vembrix
