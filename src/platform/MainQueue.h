#pragma once

#include <chrono>
#include <functional>
#include <utility>

#include "platform/Token.h"

namespace vembrix {

using Duration = std::chrono::nanoseconds;

/// A block that is due later; dropping the token cancels it.
using WorkItem = Token;
/// A repeating timer; dropping the token ends it.
using TimerSource = Token;

/// The queue of the main thread: the only clock of the program. Blocks run on
/// the main thread, one at a time, also while a menu is open that an event opened;
/// those due at the same moment run in the order in which they were given. A block
/// that runs an event loop of its own may keep the others waiting.
class MainQueue {
 public:
  static MainQueue& main();

  virtual ~MainQueue() = default;

  /// Runs the block after the current event. Any thread; all other calls are for the main thread.
  virtual void async(std::function<void()> block) = 0;

  /// Runs the block once, `delay` from now. Cannot be cancelled.
  virtual void after(Duration delay, std::function<void()> block) = 0;

  /// Runs the block once, `delay` from now, unless the token ends before.
  [[nodiscard]] virtual WorkItem schedule(Duration delay, std::function<void()> block) = 0;

  /// Runs the block first `delay` from now and then every `interval`, without drift. Missed beats
  /// (a busy thread, sleep) are made up for by a single one.
  [[nodiscard]] virtual TimerSource repeat(Duration delay, Duration interval,
                                           std::function<void()> block) = 0;

  /// As repeat(), for a block that looks for changes. A system that reports each change by an event
  /// skips beats while there is none, so that a program at rest is not woken. After an event it
  /// beats once, in its rhythm or together with a poll that is due earlier.
  [[nodiscard]] virtual TimerSource poll(Duration delay, Duration interval,
                                         std::function<void()> block) {
    return repeat(delay, interval, std::move(block));
  }
};

}  // namespace vembrix
