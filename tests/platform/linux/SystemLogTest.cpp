#include "platform/SystemLog.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "platform/linux/support/SentLines.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

/// Captures what is written to standard error while it lives.
class StandardError {
 public:
  StandardError() { testing::internal::CaptureStderr(); }
  ~StandardError() {
    if (!isTaken_) testing::internal::GetCapturedStderr();
  }
  StandardError(const StandardError&) = delete;
  StandardError& operator=(const StandardError&) = delete;

  std::string take() {
    isTaken_ = true;
    return testing::internal::GetCapturedStderr();
  }

 private:
  bool isTaken_ = false;
};

TEST(SystemLogTest, WritesToStandardErrorToo) {
  StandardError output;
  logLine("something happened");
  SystemLog::shared().write("as it is: %s");
  EXPECT_EQ(output.take(), "[Vembrix] something happened\nas it is: %s\n");
}

TEST(SystemLogTest, ItsLinesCarryTheProgramsName) {
  logLine("something happened");
  EXPECT_EQ(logIdentifier(), "Vembrix");
}

TEST(SystemLogTest, AMessageOfSeveralLinesIsOneLine) {
  StandardError output;
  logLine(std::string_view("one\ntwo\r\nthree\0four\n", 20));
  EXPECT_EQ(output.take(), "[Vembrix] one two  three four \n");
  EXPECT_THAT(sentLines(), ElementsAre("[Vembrix] one two  three four "));
}

TEST(SystemLogTest, SurvivesThatNobodyReadsStandardError) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  close(ends[0]);
  const int former = dup(STDERR_FILENO);
  dup2(ends[1], STDERR_FILENO);
  logLine("into a broken pipe");
  logLine("and again");
  close(STDERR_FILENO);
  logLine("into nothing");
  dup2(former, STDERR_FILENO);
  EXPECT_EQ(sentLines().size(), 3U);
}

TEST(SystemLogTest, AFullPipeHoldsNobodyUp) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const int former = dup(STDERR_FILENO);
  dup2(ends[1], STDERR_FILENO);
  const auto start = std::chrono::steady_clock::now();
  // More than a pipe holds, and more than it takes at once.
  for (int i = 0; i < 30; ++i) logLine(std::string(10000, 'x'));
  const auto taken = std::chrono::steady_clock::now() - start;
  dup2(former, STDERR_FILENO);
  EXPECT_LT(taken, std::chrono::seconds(10));
  const auto deadline = start + std::chrono::seconds(30);
  while (sentLines().size() < 30 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(sentLines().size(), 30U) << "the journal has them all";
}

TEST(SystemLogTest, LeavesTheSignalsOfOthersAsTheyAre) {
  sigset_t before{};
  sigset_t after{};
  pthread_sigmask(SIG_SETMASK, nullptr, &before);
  logLine("a line");
  pthread_sigmask(SIG_SETMASK, nullptr, &after);
  EXPECT_EQ(sigismember(&before, SIGPIPE), sigismember(&after, SIGPIPE));
}

}  // namespace
}  // namespace vembrix
