#include "platform/MainQueue.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/Application.h"
#include "platform/linux/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

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
  queue_.after(milliseconds(30), note("after"));
  const auto item = queue_.schedule(milliseconds(20), note("scheduled"));
  auto cancelled = queue_.schedule(milliseconds(20), note("cancelled"));
  const auto timer = queue_.repeat(milliseconds(10), std::chrono::hours(1), note("repeated"));
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

TEST_F(RunningMainQueueTest, IsOnTime) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  Clock::time_point ran;
  queue_.after(std::chrono::microseconds(10500), [&] { ran = Clock::now(); });
  EXPECT_TRUE(runUntil([&] { return ran != Clock::time_point(); }));
  EXPECT_GE(ran - start, std::chrono::microseconds(10500)) << "never early";
  // A coarse timer may be off by a twentieth; a loaded machine by more.
  EXPECT_LE(ran - start, milliseconds(60));
}

TEST_F(RunningMainQueueTest, BlocksThatAddBlocksLetEventsThrough) {
  // A chain without end, and an event of Qt's that must get its turn.
  std::function<void()> link = [&] { queue_.async(link); };
  queue_.async(link);
  bool passed = false;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [&] { passed = true; }, Qt::QueuedConnection);
  EXPECT_TRUE(runUntil([&] { return passed; }));
  link = [] {};
  runFor(milliseconds(5));
}

TEST_F(RunningMainQueueTest, WhatABlockHoldsGoesWithItsToken) {
  const auto held = std::make_shared<int>();
  auto item = queue_.schedule(std::chrono::hours(1), [held] {});
  auto timer = queue_.repeat(milliseconds(0), milliseconds(1), [held] {});
  runFor(milliseconds(10));
  EXPECT_EQ(held.use_count(), 3);
  item.reset();
  timer.reset();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(RunningMainQueueTest, WhatABlockHoldsGoesWhenItHasRun) {
  const auto held = std::make_shared<int>();
  const auto item = queue_.schedule(milliseconds(0), [held] {});
  queue_.async([held] {});
  EXPECT_TRUE(runUntil([&] { return held.use_count() == 1; }));
}

TEST_F(RunningMainQueueTest, WhatABlockHoldsMayReachTheQueueAtItsEnd) {
  auto held = std::shared_ptr<void>(this, [&](void*) { queue_.async(note("at its end")); });
  auto item = queue_.schedule(std::chrono::hours(1), [held] {});
  held.reset();
  item.reset();
  EXPECT_TRUE(runUntil([&] { return calls_.size() == 1; }));
}

}  // namespace
}  // namespace vembrix
