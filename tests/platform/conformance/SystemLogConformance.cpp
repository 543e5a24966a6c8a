#include "platform/SystemLog.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

class SystemLogConformance : public testing::Test {
 protected:
  /// Returns the lines since the start of the test.
  std::vector<std::string> lines() {
    std::vector<std::string> all = system_.logLines();
    all.erase(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(before_));
    return all;
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  std::size_t before_ = system_.logLines().size();
};

TEST_F(SystemLogConformance, WritesTheLineAsItIs) {
  SystemLog::shared().write("100 %s of “Büro” \xF0\x9F\x8F\xA0 %n");
  EXPECT_THAT(lines(), ElementsAre("100 %s of “Büro” \xF0\x9F\x8F\xA0 %n"));
}

TEST_F(SystemLogConformance, WritesTheLinesInTheirOrder) {
  SystemLog::shared().write("first");
  SystemLog::shared().write("");
  SystemLog::shared().write("third");
  EXPECT_THAT(lines(), ElementsAre("first", "", "third"));
}

TEST_F(SystemLogConformance, TakesTextThatEndsWithoutANul) {
  SystemLog::shared().write(std::string_view("just this, not that").substr(0, 9));
  EXPECT_THAT(lines(), ElementsAre("just this"));
}

TEST_F(SystemLogConformance, PutsTheProgramsNameBeforeItsMessages) {
  logLine("something happened");
  EXPECT_THAT(lines(), ElementsAre("[Vembrix] something happened"));
}

TEST_F(SystemLogConformance, TakesLinesOfAnyThread) {
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < 50; ++i) logLine("line of a thread");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(lines(), std::vector<std::string>(200, "[Vembrix] line of a thread"));
}

TEST_F(SystemLogConformance, ABrokenPromiseEndsTheProcessWithItsCauseOnRecord) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(programmingError("this cannot be"), testing::KilledBySignal(SIGABRT),
              "\\[Vembrix\\] this cannot be");
}

}  // namespace
}  // namespace vembrix
