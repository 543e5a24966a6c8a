#include "platform/macos/support/RunLoop.h"

#import <Foundation/Foundation.h>

#include <algorithm>

#import "platform/macos/support/Arc.h"

namespace vembrix {
namespace {

using Clock = std::chrono::steady_clock;

/// Runs one turn, which takes at most that long.
void turn(Duration longest) {
  @autoreleasepool {
    const CFTimeInterval seconds = std::chrono::duration<double>(longest).count();
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, seconds, /*returnAfterSourceHandled=*/true);
  }
}

}  // namespace

void runFor(Duration duration) {
  const auto end = Clock::now() + duration;
  do {
    turn(std::max(Duration(end - Clock::now()), Duration::zero()));
  } while (Clock::now() < end);
}

bool runUntil(const std::function<bool()>& condition, Duration limit) {
  constexpr Duration kSlice = std::chrono::milliseconds(5);
  const auto end = Clock::now() + limit;
  while (!condition()) {
    if (Clock::now() >= end) return false;
    turn(kSlice);
  }
  return true;
}

}  // namespace vembrix
