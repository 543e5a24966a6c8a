#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/MainQueue.h"

namespace vembrix {

/// A main queue on a clock that is moved by hand. Blocks run only inside advance(), runPending()
/// and runUntilIdle(), on the calling thread, with the clock at exactly the time at which they are
/// due.
class EmbeddedMainQueue : public MainQueue {
 public:
  /// The queue behind MainQueue::main().
  static EmbeddedMainQueue& shared();

  void async(std::function<void()> block) override;
  void after(Duration delay, std::function<void()> block) override;
  WorkItem schedule(Duration delay, std::function<void()> block) override;
  TimerSource repeat(Duration delay, Duration interval, std::function<void()> block) override;

  /// Time since the queue was made.
  Duration now() const { return now_; }

  /// Moves the clock forward and runs all blocks that become due, those added meanwhile included.
  void advance(Duration duration);

  /// Runs the blocks that are due now.
  void runPending() { advance(Duration::zero()); }

  /// Moves the clock from one due block to the next until none is left or `stop`, called after each
  /// block, returns true.
  void runUntilIdle(const std::function<bool()>& stop);

  /// Moves the clock without running blocks, as when the machine sleeps or the main thread is busy.
  void sleep(Duration duration);

  /// The time at which the next block or timer is due, possibly in the past; empty if none waits.
  [[nodiscard]] std::optional<Duration> nextDue() const;

  /// Number of waiting blocks and timers.
  std::size_t pendingCount() const;

 private:
  struct Entry {
    std::function<void()> block;
    Duration interval{};  // zero: once
    bool ended = false;
    int running = 0;  // more than one where a block lets the queue run
  };
  /// Due time, then order of entry.
  using Key = std::pair<Duration, std::uint64_t>;

  std::shared_ptr<Entry> add(Duration delay, Duration interval, std::function<void()> block);
  Token tokenFor(const std::shared_ptr<Entry>& entry);
  /// Takes the first live entry that is due by `limit`; null if there is none.
  std::shared_ptr<Entry> takeDue(Duration limit);
  void run(const std::shared_ptr<Entry>& entry);

  mutable std::mutex mutex_;
  std::map<Key, std::shared_ptr<Entry>> entries_;
  std::uint64_t sequence_ = 0;
  /// The due time of the running entry.
  Duration dueOfRunning_{};
  Duration now_{};
};

}  // namespace vembrix
