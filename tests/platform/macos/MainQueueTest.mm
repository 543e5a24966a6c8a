#include "platform/MainQueue.h"

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#import "platform/macos/Arc.h"
#include "platform/macos/RunLoop.h"

/// Notes its end.
@interface VembrixMortal : NSObject
- (instancetype)initWithFlag:(std::shared_ptr<bool>)isGone;
@end

@implementation VembrixMortal {
  std::shared_ptr<bool> _isGone;
}
- (instancetype)initWithFlag:(std::shared_ptr<bool>)isGone {
  self = [super init];
  _isGone = std::move(isGone);
  return self;
}
- (void)dealloc {
  *_isGone = true;
}
@end

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

class MainQueueTest : public testing::Test {
 protected:
  std::function<void()> note(std::string word) {
    return [this, word = std::move(word)] { calls_.push_back(word); };
  }

  MainQueue& queue_ = MainQueue::main();
  std::vector<std::string> calls_;
};

TEST_F(MainQueueTest, TimersGoOnInARunLoopWithinATimersBlock) {
  // As of a menu that a timer's block opens.
  int beats = 0;
  const auto timer = queue_.repeat(milliseconds(5), milliseconds(5), [&] { beats += 1; });
  CFRunLoopTimerRef opener = CFRunLoopTimerCreateWithHandler(
      kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + 0.01, 0, 0, 0, ^(CFRunLoopTimerRef) {
        const int before = beats;
        runFor(milliseconds(60));
        EXPECT_GE(beats, before + 3);
        calls_.emplace_back("closed");
      });
  CFRunLoopAddTimer(CFRunLoopGetMain(), opener, kCFRunLoopCommonModes);
  EXPECT_TRUE(runUntil([&] { return !calls_.empty(); }));
  CFRunLoopTimerInvalidate(opener);
  CFRelease(opener);
}

TEST_F(MainQueueTest, NothingIsEarly) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  Clock::time_point ran;
  queue_.after(std::chrono::microseconds(10500), [&] { ran = Clock::now(); });
  EXPECT_TRUE(runUntil([&] { return ran != Clock::time_point(); }));
  EXPECT_GE(ran - start, std::chrono::microseconds(10500));
}

TEST_F(MainQueueTest, WhatABlockHoldsGoesWithItsToken) {
  const auto held = std::make_shared<int>();
  auto item = queue_.schedule(std::chrono::hours(1), [held] {});
  auto timer = queue_.repeat(milliseconds(0), milliseconds(1), [held] {});
  runFor(milliseconds(10));
  item.reset();
  timer.reset();
  // The system lets go of a source's handler by way of the queue.
  EXPECT_TRUE(runUntil([&] { return held.use_count() == 1; }));
}

TEST_F(MainQueueTest, WhatABlockHoldsGoesWhenItHasRun) {
  const auto held = std::make_shared<int>();
  const auto item = queue_.schedule(milliseconds(0), [held] {});
  const auto later = queue_.schedule(milliseconds(1), [held] {});
  queue_.async([held] {});
  queue_.after(milliseconds(1), [held] {});
  EXPECT_TRUE(runUntil([&] { return held.use_count() == 1; }));
}

TEST_F(MainQueueTest, WhatABlockHoldsMayReachTheQueueAtItsEnd) {
  auto held = std::shared_ptr<void>(this, [&](void*) { queue_.async(note("at its end")); });
  auto item = queue_.schedule(std::chrono::hours(1), [held] {});
  held.reset();
  item.reset();
  EXPECT_TRUE(runUntil([&] { return !calls_.empty(); }));
}

TEST_F(MainQueueTest, ATimerMayReplaceItselfWhileItRuns) {
  TimerSource timer;
  std::function<void()> first = [&] {
    calls_.emplace_back("first");
    timer = queue_.repeat(milliseconds(0), milliseconds(5), note("second"));
  };
  timer = queue_.repeat(milliseconds(5), milliseconds(5), first);
  EXPECT_TRUE(runUntil([&] { return calls_.size() >= 3; }));
  timer.reset();
  calls_.resize(3);
  runFor(milliseconds(20));
  EXPECT_THAT(calls_, ElementsAre("first", "second", "second"));
}

TEST_F(MainQueueTest, ATokenDroppedInAnotherBlockAtTheSameMomentCancels) {
  WorkItem second;
  const auto first = queue_.schedule(milliseconds(0), [&] { second.reset(); });
  second = queue_.schedule(milliseconds(0), note("cancelled"));
  runFor(milliseconds(20));
  EXPECT_TRUE(calls_.empty());
}

TEST_F(MainQueueTest, WhatABlockAutoreleasesGoesWithIt) {
  // Long before the pool of whoever runs the loop is emptied.
  const auto isGone = std::make_shared<bool>(false);
  const auto leave = [isGone] {
    *isGone = false;
    NSMutableArray* holder = [NSMutableArray array];
    [holder addObject:[[VembrixMortal alloc] initWithFlag:isGone]];
    CFAutorelease(CFBridgingRetain(holder));
  };
  queue_.async(leave);
  queue_.async([&] { calls_.emplace_back(*isGone ? "gone" : "there"); });
  queue_.after(milliseconds(2), leave);
  queue_.after(milliseconds(4), [&] { calls_.emplace_back(*isGone ? "gone" : "there"); });
  EXPECT_TRUE(runUntil([&] { return calls_.size() == 2; }));
  int beats = 0;
  const auto timer = queue_.repeat(milliseconds(2), milliseconds(2), [&] {
    if (beats++ == 0) return leave();
    if (beats == 2) calls_.emplace_back(*isGone ? "gone" : "there");
  });
  EXPECT_TRUE(runUntil([&] { return calls_.size() == 3; }));
  EXPECT_THAT(calls_, ElementsAre("gone", "gone", "gone"));
}

}  // namespace
}  // namespace vembrix
