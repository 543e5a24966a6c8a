#include "platform/SystemLog.h"

#include <pthread.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <string>

namespace vembrix {
namespace {

/// Keeps a SIGPIPE of this thread's own writing from ending the process: who
/// reads standard error may leave at any time.
class PipeSignalGuard {
 public:
  PipeSignalGuard() {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    wasPending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &pipe_, &former_);
  }
  ~PipeSignalGuard() {
    const timespec now{};
    if (!wasPending_) {
      while (sigtimedwait(&pipe_, nullptr, &now) == -1 && errno == EINTR) {
      }
    }
    pthread_sigmask(SIG_SETMASK, &former_, nullptr);
  }
  PipeSignalGuard(const PipeSignalGuard&) = delete;
  PipeSignalGuard& operator=(const PipeSignalGuard&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t former_{};
  bool wasPending_ = false;
};

void writeToStandardError(std::string_view text) {
  const PipeSignalGuard guard;
  while (!text.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

/// The journal by way of syslog, and standard error for who starts the program
/// by hand.
class LinuxSystemLog : public SystemLog {
 public:
  LinuxSystemLog() { openlog("Vembrix", LOG_PID, LOG_USER); }

  void write(std::string_view line) override {
    std::string text(line);
    // What others write (a name, a message of a library) must not pass as
    // lines of its own.
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
    syslog(LOG_NOTICE, "%s", text.c_str());
    text.push_back('\n');
    // In one piece, so that lines of several threads do not mix.
    writeToStandardError(text);
  }
};

}  // namespace

SystemLog& SystemLog::shared() {
  // Never destroyed: there may be something to log until the very end.
  static auto& log = *new LinuxSystemLog;
  return log;
}

}  // namespace vembrix
