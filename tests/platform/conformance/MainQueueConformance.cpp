#include "platform/MainQueue.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class MainQueueConformance : public testing::Test {
 protected:
  std::function<void()> note(std::string word) {
    return [this, word = std::move(word)] { calls_.push_back(word); };
  }

  bool runUntilCalls(std::size_t count) {
    return system_.runUntil([&] { return calls_.size() >= count; }, kPatience);
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  MainQueue& queue_ = MainQueue::main();
  std::vector<std::string> calls_;
};

TEST_F(MainQueueConformance, AsyncRunsAfterTheCurrentEvent) {
  queue_.async(note("block"));
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_TRUE(runUntilCalls(1));
  system_.runFor(milliseconds(20));
  EXPECT_THAT(calls_, ElementsAre("block"));
}

TEST_F(MainQueueConformance, AsyncFromABlockRunsAfterTheBlock) {
  queue_.async([&] {
    queue_.async(note("inner"));
    calls_.emplace_back("outer");
  });
  EXPECT_TRUE(runUntilCalls(2));
  EXPECT_THAT(calls_, ElementsAre("outer", "inner"));
}

TEST_F(MainQueueConformance, BlocksOfTheSameMomentRunInTheOrderGiven) {
  queue_.async(note("1"));
  queue_.after(milliseconds(0), note("2"));
  const auto third = queue_.schedule(milliseconds(0), note("3"));
  queue_.async(note("4"));
  const auto fifth = queue_.repeat(milliseconds(0), std::chrono::hours(1), note("5"));
  queue_.after(milliseconds(-10), note("6"));
  EXPECT_TRUE(runUntilCalls(6));
  EXPECT_THAT(calls_, ElementsAre("1", "2", "3", "4", "5", "6"));
}

TEST_F(MainQueueConformance, TimersOfTheSameDelayRunInTheOrderGiven) {
  std::array<WorkItem, 5> items;
  for (std::size_t i = 0; i < items.size(); ++i) {
    items.at(i) = queue_.schedule(milliseconds(15), note(std::to_string(i)));
  }
  EXPECT_TRUE(runUntilCalls(5));
  EXPECT_THAT(calls_, ElementsAre("0", "1", "2", "3", "4"));
}

TEST_F(MainQueueConformance, TheEarlierMomentComesFirst) {
  queue_.after(milliseconds(60), note("60"));
  queue_.after(milliseconds(20), note("20"));
  const auto middle = queue_.schedule(milliseconds(40), note("40"));
  queue_.async(note("0"));
  EXPECT_TRUE(runUntilCalls(4));
  EXPECT_THAT(calls_, ElementsAre("0", "20", "40", "60"));
}

TEST_F(MainQueueConformance, NothingRunsBeforeItsTime) {
  queue_.after(milliseconds(300), note("after"));
  const auto item = queue_.schedule(milliseconds(300), note("scheduled"));
  const auto timer = queue_.repeat(milliseconds(300), milliseconds(300), note("repeated"));
  system_.runFor(milliseconds(100));
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_TRUE(runUntilCalls(3));
  EXPECT_THAT(calls_, ElementsAre("after", "scheduled", "repeated"));
}

TEST_F(MainQueueConformance, OneTimeBlocksRunOnce) {
  queue_.after(milliseconds(10), note("after"));
  const auto item = queue_.schedule(milliseconds(10), note("scheduled"));
  system_.runFor(milliseconds(100));
  EXPECT_THAT(calls_, ElementsAre("after", "scheduled"));
}

TEST_F(MainQueueConformance, ABlockMayBeFarAway) {
  // The longest possible time, which no clock reaches.
  queue_.after(Duration::max(), note("never"));
  const auto item = queue_.schedule(std::chrono::hours(24 * 365 * 50), note("hardly"));
  queue_.after(milliseconds(10), note("soon"));
  system_.runFor(milliseconds(50));
  EXPECT_THAT(calls_, ElementsAre("soon"));
}

TEST_F(MainQueueConformance, ACancelledItemNeverRuns) {
  auto item = queue_.schedule(milliseconds(10), note("cancelled"));
  item.reset();
  { const auto dropped = queue_.schedule(milliseconds(0), note("dropped")); }
  auto replaced = queue_.schedule(milliseconds(10), note("replaced"));
  replaced = queue_.schedule(milliseconds(20), note("replacement"));
  system_.runFor(milliseconds(100));
  EXPECT_THAT(calls_, ElementsAre("replacement"));
}

TEST_F(MainQueueConformance, AnItemThatIsDueAlreadyCanStillBeCancelled) {
  WorkItem later;
  queue_.after(milliseconds(10), [&] {
    calls_.emplace_back("canceller");
    later.reset();
  });
  later = queue_.schedule(milliseconds(10), note("cancelled"));
  // Both are due before either can run.
  std::this_thread::sleep_for(milliseconds(30));
  system_.runFor(milliseconds(50));
  EXPECT_THAT(calls_, ElementsAre("canceller"));
}

TEST_F(MainQueueConformance, AnItemMayEndWhileItRuns) {
  WorkItem item;
  item = queue_.schedule(milliseconds(0), [&, held = std::string("still here")] {
    item.reset();
    calls_.push_back(held);
  });
  EXPECT_TRUE(runUntilCalls(1));
  system_.runFor(milliseconds(20));
  EXPECT_THAT(calls_, ElementsAre("still here"));
}

TEST_F(MainQueueConformance, ATokenMayOutliveItsBlock) {
  auto item = queue_.schedule(milliseconds(0), note("ran"));
  EXPECT_TRUE(runUntilCalls(1));
  EXPECT_TRUE(item);
  item.reset();
  queue_.async(note("next"));
  EXPECT_TRUE(runUntilCalls(2));
  EXPECT_THAT(calls_, ElementsAre("ran", "next"));
}

TEST_F(MainQueueConformance, ATimerRepeatsUntilItIsDropped) {
  TimerSource timer;
  timer = queue_.repeat(milliseconds(5), milliseconds(5), [&, count = 0]() mutable {
    calls_.push_back(std::to_string(++count));
    if (count == 3) timer.reset();
  });
  EXPECT_TRUE(runUntilCalls(3));
  system_.runFor(milliseconds(50));
  EXPECT_THAT(calls_, ElementsAre("1", "2", "3"));
}

TEST_F(MainQueueConformance, ATimersFirstBeatHasADelayOfItsOwn) {
  const auto timer = queue_.repeat(milliseconds(0), std::chrono::hours(1), note("beat"));
  EXPECT_TRUE(runUntilCalls(1));
  system_.runFor(milliseconds(50));
  EXPECT_THAT(calls_, ElementsAre("beat"));
}

TEST_F(MainQueueConformance, ATimerDoesNotDrift) {
  // Each beat keeps the thread busy for more than half of the interval. If that were added to the
  // interval, six beats would fit. A busy machine may miss some beats, but not in every attempt.
  for (int attempt = 0; attempt < 10 && calls_.size() < 8; ++attempt) {
    calls_.clear();
    const auto timer = queue_.repeat(milliseconds(40), milliseconds(40), [&] {
      calls_.emplace_back("beat");
      std::this_thread::sleep_for(milliseconds(25));
    });
    bool over = false;
    queue_.after(milliseconds(420), [&] { over = true; });
    EXPECT_TRUE(system_.runUntil([&] { return over; }, kPatience));
    EXPECT_LE(calls_.size(), 10U);
  }
  EXPECT_GE(calls_.size(), 8U);
}

TEST_F(MainQueueConformance, AnyThreadMayHandOverABlock) {
  const auto mainThread = std::this_thread::get_id();
  std::thread::id ranOn;
  std::thread([&] {
    queue_.async([&] {
      ranOn = std::this_thread::get_id();
      calls_.emplace_back("block");
    });
  }).join();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_TRUE(runUntilCalls(1));
  EXPECT_EQ(ranOn, mainThread);
}

TEST_F(MainQueueConformance, ThreadsMayHandOverBlocksAtTheSameTime) {
  constexpr int kThreads = 4;
  constexpr int kBlocks = 250;
  std::vector<std::vector<int>> received(kThreads);
  std::size_t count = 0;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kBlocks; ++i) {
        queue_.async([&, t, i] {
          received[static_cast<std::size_t>(t)].push_back(i);
          count += 1;
        });
      }
    });
  }
  // Runs the queue while the threads are still posting.
  system_.runFor(milliseconds(2));
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(system_.runUntil(
      [&] { return count == static_cast<std::size_t>(kThreads) * kBlocks; }, kPatience));
  for (const auto& order : received) {
    EXPECT_EQ(order.size(), static_cast<std::size_t>(kBlocks));
    EXPECT_TRUE(std::ranges::is_sorted(order));
  }
}

TEST_F(MainQueueConformance, ABlockMayScheduleAndCancelOthers) {
  std::vector<WorkItem> items;
  queue_.async([&] {
    for (int i = 0; i < 4; ++i) {
      items.push_back(queue_.schedule(milliseconds(5), note(std::to_string(i))));
    }
    items[1].reset();
    items[2] = {};
  });
  system_.runFor(milliseconds(100));
  EXPECT_THAT(calls_, ElementsAre("0", "3"));
}

TEST_F(MainQueueConformance, WhatABlockHoldsGoesWithItsToken) {
  const auto held = std::make_shared<int>();
  auto item = queue_.schedule(std::chrono::hours(1), [held] {});
  auto timer = queue_.repeat(milliseconds(0), milliseconds(1), [held] {});
  system_.runFor(milliseconds(10));
  EXPECT_GE(held.use_count(), 3);
  item.reset();
  timer.reset();
  // The system may release it through the queue.
  EXPECT_TRUE(system_.runUntil([&] { return held.use_count() == 1; }, kPatience));
}

TEST_F(MainQueueConformance, WhatABlockHoldsGoesWhenItHasRun) {
  const auto held = std::make_shared<int>();
  const auto item = queue_.schedule(milliseconds(0), [held] {});
  const auto later = queue_.schedule(milliseconds(1), [held] {});
  queue_.async([held] {});
  queue_.after(milliseconds(1), [held] {});
  EXPECT_TRUE(system_.runUntil([&] { return held.use_count() == 1; }, kPatience));
}

TEST_F(MainQueueConformance, WhatABlockHoldsMayReachTheQueueAtItsEnd) {
  auto held = std::shared_ptr<void>(this, [&](void*) { queue_.async(note("at its end")); });
  auto item = queue_.schedule(std::chrono::hours(1), [held] {});
  held.reset();
  item.reset();
  EXPECT_TRUE(runUntilCalls(1));
}

TEST_F(MainQueueConformance, ATimerMayReplaceItselfWhileItRuns) {
  TimerSource timer;
  timer = queue_.repeat(milliseconds(5), milliseconds(5), [&] {
    calls_.emplace_back("first");
    timer = queue_.repeat(milliseconds(0), milliseconds(5), note("second"));
  });
  EXPECT_TRUE(runUntilCalls(3));
  timer.reset();
  calls_.resize(3);
  system_.runFor(milliseconds(20));
  EXPECT_THAT(calls_, ElementsAre("first", "second", "second"));
}

TEST_F(MainQueueConformance, ATokenDroppedInAnotherBlockAtTheSameMomentCancels) {
  WorkItem second;
  const auto first = queue_.schedule(milliseconds(0), [&] { second.reset(); });
  second = queue_.schedule(milliseconds(0), note("cancelled"));
  system_.runFor(milliseconds(20));
  EXPECT_THAT(calls_, IsEmpty());
}

}  // namespace
}  // namespace vembrix
