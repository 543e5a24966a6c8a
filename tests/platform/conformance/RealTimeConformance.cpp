// The main queue's promises about time that passes while a block runs. On the desktop in the
// process the clock stands still then.

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/MainQueue.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

TEST(RealTimeConformance, BeatsThatWereMissedAreOne) {
  MainQueue& queue = MainQueue::main();
  SystemUnderTest& system = SystemUnderTest::shared();
  int beats = 0;
  const auto timer = queue.repeat(milliseconds(20), milliseconds(20), [&] {
    // Five and a half intervals.
    if (++beats == 1) std::this_thread::sleep_for(milliseconds(110));
  });
  bool over = false;
  // Beats at 20 (until 130), one for all missed ones, 140, 160.
  queue.after(milliseconds(170), [&] { over = true; });
  EXPECT_TRUE(system.runUntil([&] { return over; }, kPatience));
  EXPECT_GE(beats, 2);
  EXPECT_LE(beats, 4);
}

}  // namespace
}  // namespace vembrix
