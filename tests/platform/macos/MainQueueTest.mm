#include "platform/MainQueue.h"

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#import "platform/macos/support/Arc.h"
#include "platform/macos/support/RunLoop.h"

/// Records its deallocation.
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
  MainQueue& queue_ = MainQueue::main();
  std::vector<std::string> calls_;
};

TEST_F(MainQueueTest, TimersGoOnInARunLoopWithinATimersBlock) {
  // A nested loop, like that of a menu that a timer's block opens.
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

TEST_F(MainQueueTest, WhatABlockAutoreleasesGoesWithIt) {
  // Long before the caller's pool is emptied.
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
