#include "platform/MainQueue.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/Application.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class MainQueueTest : public testing::Test {
 protected:
  MainQueueTest() { TestSession::useNoScreen(); }

  std::function<void()> note(std::string word) {
    return [this, word = std::move(word)] { calls_.push_back(word); };
  }

  TestSession session_;
  MainQueue& queue_ = MainQueue::main();
  std::vector<std::string> calls_;
};

TEST_F(MainQueueTest, KeepsWhatIsGivenBeforeThereIsAnApplication) {
  queue_.async(note("async"));
  queue_.after(milliseconds(400), note("after"));
  const auto item = queue_.schedule(milliseconds(300), note("scheduled"));
  auto cancelled = queue_.schedule(milliseconds(300), note("cancelled"));
  const auto timer = queue_.repeat(milliseconds(200), std::chrono::hours(1), note("repeated"));
  std::thread([&] { queue_.async(note("of a thread")); }).join();
  cancelled.reset();

  Application::shared();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_TRUE(runUntil([&] { return calls_.size() == 5; }));
  EXPECT_THAT(calls_, ElementsAre("async", "of a thread", "repeated", "scheduled", "after"));
}

class RunningMainQueueTest : public MainQueueTest {
 protected:
  RunningMainQueueTest() { Application::shared(); }
};

TEST_F(RunningMainQueueTest, RunsInANestedLoopAsOfAMenu) {
  queue_.async([&] {
    QEventLoop menu;
    queue_.async(note("async"));
    queue_.after(milliseconds(5), note("after"));
    queue_.after(milliseconds(10), [&] { menu.quit(); });
    menu.exec();
    calls_.emplace_back("menu closed");
  });
  queue_.async(note("given before"));
  EXPECT_TRUE(runUntil([&] { return calls_.size() == 4; }));
  EXPECT_THAT(calls_, ElementsAre("given before", "async", "after", "menu closed"));
}

TEST_F(RunningMainQueueTest, ARepeatingTimerGoesOnInANestedLoop) {
  int beats = 0;
  const auto timer = queue_.repeat(milliseconds(5), milliseconds(5), [&] {
    if (++beats != 1) return;
    QEventLoop menu;
    queue_.after(milliseconds(40), [&] { menu.quit(); });
    menu.exec();
    EXPECT_GE(beats, 3);
  });
  EXPECT_TRUE(runUntil([&] { return beats > 4; }));
}

TEST_F(RunningMainQueueTest, APollRestsWhileThereAreNoEvents) {
  int beats = 0;
  const auto poll = queue_.poll(milliseconds(0), milliseconds(5), [&] { ++beats; });
  runFor(milliseconds(300));
  EXPECT_GE(beats, 1);
  EXPECT_LE(beats, 10) << "sixty would fit";
}

TEST_F(RunningMainQueueTest, AnEventEndsTheRestOfAPoll) {
  int beats = 0;
  const auto poll = queue_.poll(milliseconds(0), milliseconds(5), [&] { ++beats; });
  for (int i = 0; i < 3; ++i) {
    runFor(milliseconds(100));
    const int before = beats;
    // The end of the loop of runFor() is an event, too.
    EXPECT_TRUE(runUntil([&] { return beats > before; }));
  }
}

TEST_F(RunningMainQueueTest, APollGoesOnWhileThereAreEvents) {
  int beats = 0;
  const auto poll = queue_.poll(milliseconds(0), milliseconds(5), [&] { ++beats; });
  const auto events = queue_.repeat(milliseconds(0), milliseconds(2), [] {});
  EXPECT_TRUE(runUntil([&] { return beats > 20; }));
}

TEST_F(RunningMainQueueTest, TwoPollsLetEachOtherRest) {
  int beats = 0;
  const auto one = queue_.poll(milliseconds(0), milliseconds(5), [&] { ++beats; });
  const auto other = queue_.poll(milliseconds(3), milliseconds(7), [&] { ++beats; });
  runFor(milliseconds(400));
  EXPECT_LE(beats, 24) << "more than a hundred would fit";
}

TEST_F(RunningMainQueueTest, PollsComeBackFromTheirRestTogether) {
  std::vector<int> beats;
  const auto often = queue_.poll(milliseconds(0), milliseconds(60), [&] { beats.push_back(1); });
  const auto seldom = queue_.poll(milliseconds(0), milliseconds(5000), [&] { beats.push_back(2); });
  for (int i = 0; i < 3; ++i) {
    runFor(milliseconds(200));
    beats.clear();
    queue_.async([] {});
    EXPECT_TRUE(runUntil([&] { return beats.size() >= 2; }));
    EXPECT_THAT(beats, UnorderedElementsAre(1, 2));
  }
}

TEST_F(RunningMainQueueTest, APollMayBeEndedWhileItRests) {
  int beats = 0;
  auto poll = queue_.poll(milliseconds(0), milliseconds(5), [&] { ++beats; });
  runFor(milliseconds(100));
  poll.reset();
  const int before = beats;
  runFor(milliseconds(50));
  EXPECT_EQ(beats, before);
}

TEST_F(RunningMainQueueTest, APollMayEndItself) {
  int beats = 0;
  TimerSource poll;
  poll = queue_.poll(milliseconds(0), milliseconds(5), [&] {
    if (++beats == 3) poll.reset();
  });
  const auto events = queue_.repeat(milliseconds(0), milliseconds(2), [] {});
  runFor(milliseconds(100));
  EXPECT_EQ(beats, 3);
}

TEST_F(RunningMainQueueTest, IsOnTime) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::microseconds kDelay{10500};
  // A busy machine is late now and then; a coarse timer would always be.
  Clock::duration best = Clock::duration::max();
  for (int i = 0; i < 20; ++i) {
    const auto start = Clock::now();
    Clock::time_point ran;
    queue_.after(kDelay, [&] { ran = Clock::now(); });
    EXPECT_TRUE(runUntil([&] { return ran != Clock::time_point(); }));
    best = std::min(best, ran - start);
  }
  EXPECT_GE(best, kDelay) << "never early";
  EXPECT_LE(best, kDelay + milliseconds(20));
}

TEST_F(RunningMainQueueTest, BlocksThatAddBlocksLetEventsThrough) {
  // An endless chain of blocks, and an event of Qt's that must still be handled.
  std::function<void()> link = [&] { queue_.async(link); };
  queue_.async(link);
  bool passed = false;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [&] { passed = true; }, Qt::QueuedConnection);
  EXPECT_TRUE(runUntil([&] { return passed; }));
  link = [] {};
  runFor(milliseconds(5));
}

}  // namespace
}  // namespace vembrix
