#include "platform/SystemLog.h"

#include <poll.h>
#include <pthread.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>

namespace vembrix {
namespace {

/// Writes to standard error, and drops what does not fit because no program reads it. One thread
/// only.
void writeToStandardError(std::string_view text) {
  constexpr int kPatience = 100;  // milliseconds
  static bool isFull = false;
  while (!text.empty()) {
    pollfd output{STDERR_FILENO, POLLOUT, 0};
    isFull = ::poll(&output, 1, isFull ? 0 : kPatience) == 0;
    if (isFull || (output.revents & POLLOUT) == 0) return;
    // A pipe that is ready accepts this much at once, in one piece.
    const ssize_t written =
        ::write(STDERR_FILENO, text.data(), std::min<std::size_t>(text.size(), 4096));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

/// Logs to the journal through syslog, and to standard error for starts by hand. Writing to either
/// may block for any time. So a separate thread writes; callers wait for it as long as it makes
/// progress, so that a line is written before the program goes on.
class LinuxSystemLog : public SystemLog {
 public:
  LinuxSystemLog() { openlog("Vembrix", LOG_PID, LOG_USER); }

  void write(std::string_view line) override {
    std::string text(line);
    // Text from outside (a name, a message of a library) must not start lines of its own.
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
    std::unique_lock lock(mutex_);
    if (queue_.size() == kMostLines) return;
    queue_.push_back(std::move(text));
    const std::uint64_t number = ++queuedCount_;
    if (!start()) return;
    wake_.notify_one();
    if (isStuck_) return;
    isStuck_ = !written_.wait_for(lock, kPatience, [&] { return writtenCount_ >= number; });
  }

 private:
  static constexpr std::size_t kMostLines = 1000;
  static constexpr std::chrono::milliseconds kPatience{300};

  bool start() {
    if (isStarted_) return true;
    try {
      std::thread([this] { run(); }).detach();
      isStarted_ = true;
    } catch (const std::system_error&) {
      // The system has no free thread; the lines wait for the next attempt.
    }
    return isStarted_;
  }

  [[noreturn]] void run() {
    // Signals are for the main thread. A closed pipe (SIGPIPE) and a limit of file sizes (SIGXFSZ)
    // are then ordinary errors.
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    std::unique_lock lock(mutex_);
    while (true) {
      wake_.wait(lock, [this] { return !queue_.empty(); });
      std::string text = std::move(queue_.front());
      queue_.pop_front();
      lock.unlock();
      writeToStandardError(text + '\n');
      syslog(LOG_NOTICE, "%s", text.c_str());
      lock.lock();
      writtenCount_ += 1;
      isStuck_ = isStuck_ && !queue_.empty();
      written_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable written_;
  std::deque<std::string> queue_;
  std::uint64_t queuedCount_ = 0;
  std::uint64_t writtenCount_ = 0;
  /// Whether a thread has waited in vain. If so, no thread waits until everything is written.
  bool isStuck_ = false;
  bool isStarted_ = false;
};

}  // namespace

SystemLog& SystemLog::shared() {
  // Never destroyed, because lines may be logged until the very end.
  static auto& log = *new LinuxSystemLog;
  return log;
}

}  // namespace vembrix
