#import "platform/MainQueue.h"

#include <dispatch/dispatch.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#import "platform/macos/support/Arc.h"

namespace vembrix {
namespace {

/// A block that runs at most once, shared by the queue that will run it and the token that may
/// cancel it.
using Work = std::shared_ptr<std::function<void()>>;

Work makeWork(std::function<void()> block) {
  return std::make_shared<std::function<void()>>(std::move(block));
}

/// Runs the block. It is taken out first, because it may drop its own token, and so that its
/// captures are destroyed as soon as it has run. Has its own pool, because AppKit empties its pool
/// after events, which a background program hardly gets.
void runOnce(const Work& work) {
  @autoreleasepool {
    if (auto block = std::exchange(*work, nullptr)) block();
  }
}

/// A block that runs repeatedly, and may end itself while it runs.
struct Beat {
  std::function<void()> block;
  bool isOver = false;
};

/// The precision of a timer.
enum class Precision : uintptr_t {
  /// The system may let the timer coincide with other wake-ups, which saves energy.
  Shared = 0,
  /// At the exact time. By default the system may delay a timer by a tenth of its delay, as with
  /// dispatch_after(), and run two timers in either order.
  Strict = DISPATCH_TIMER_STRICT,
};

/// Returns a source on the main queue that is not activated yet.
dispatch_source_t makeTimer(Precision precision, Duration delay, std::uint64_t interval) {
  dispatch_source_t timer = dispatch_source_create(
      DISPATCH_SOURCE_TYPE_TIMER, 0, static_cast<uintptr_t>(precision), dispatch_get_main_queue());
  const Duration positive = std::max(delay, Duration::zero());
  dispatch_source_set_timer(timer, dispatch_time(DISPATCH_TIME_NOW, positive.count()), interval, 0);
  return timer;
}

/// The main dispatch queue. AppKit's run loop serves it in the common modes, to
/// which menu tracking and modal panels belong; only while one of its own blocks
/// runs a nested loop do the others wait.
///
/// A one-time timer keeps itself alive: its handler owns it until it is cancelled,
/// upon which dispatch lets go of the handler. A repeating one belongs to its
/// token. One-time timers fire in the order of their moments, and two calls are further
/// apart than the ticks of the clock, so that equal delays run in the order in
/// which they were given.
class DispatchMainQueue : public MainQueue {
 public:
  void async(std::function<void()> block) override {
    start(Duration::zero(), makeWork(std::move(block)));
  }

  void after(Duration delay, std::function<void()> block) override {
    start(delay, makeWork(std::move(block)));
  }

  WorkItem schedule(Duration delay, std::function<void()> block) override {
    const Work work = makeWork(std::move(block));
    dispatch_source_t timer = start(delay, work);
    return WorkItem([work, timer] {
      *work = nullptr;
      if (timer) dispatch_source_cancel(timer);
    });
  }

  TimerSource repeat(Duration delay, Duration interval, std::function<void()> block) override {
    const auto beat = std::make_shared<Beat>(Beat{std::move(block)});
    const Duration grid = std::max(interval, Duration(1));
    const bool isDue = delay <= Duration::zero();
    // Dispatch merges missed beats into one and keeps to the grid.
    dispatch_source_t timer = makeTimer(Precision::Shared, isDue ? grid : delay,
                                        static_cast<std::uint64_t>(grid.count()));
    const dispatch_block_t handler = ^{
      @autoreleasepool {
        if (!beat->isOver) beat->block();
      }
    };
    // A beat that is due at once waits for its turn in the queue.
    if (isDue) dispatch_async(dispatch_get_main_queue(), handler);
    dispatch_source_set_event_handler(timer, handler);
    dispatch_activate(timer);
    return TimerSource([beat, timer] {
      beat->isOver = true;
      dispatch_source_cancel(timer);
    });
  }

 private:
  /// Returns the timer, or nil for a block that is due at once: that goes to the end of the queue,
  /// behind earlier blocks. By value: blocks keep copies of values only, which clang-tidy does not
  /// know.
  // NOLINTNEXTLINE(performance-unnecessary-value-param)
  static dispatch_source_t start(Duration delay, Work work) {
    if (delay <= Duration::zero()) {
      dispatch_async(dispatch_get_main_queue(), ^{
        runOnce(work);
      });
      return nil;
    }
    dispatch_source_t timer = makeTimer(Precision::Strict, delay, DISPATCH_TIME_FOREVER);
    dispatch_source_set_event_handler(timer, ^{
      dispatch_source_cancel(timer);
      runOnce(work);
    });
    dispatch_activate(timer);
    return timer;
  }
};

}  // namespace

MainQueue& MainQueue::main() {
  static auto& queue = *new DispatchMainQueue;
  return queue;
}

}  // namespace vembrix
