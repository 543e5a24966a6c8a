#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "platform/MainQueue.h"

namespace vembrix {

/// Runs work that the user waits for off the main thread. Called on the main thread; the blocks run
/// on others.
class BackgroundWork {
 public:
  static BackgroundWork& shared();

  virtual ~BackgroundWork() = default;

  /// Runs the block soon, on another thread, possibly beside others. It must
  /// not touch anything that belongs to the main thread. The program does not
  /// wait for it when it ends.
  virtual void async(std::function<void()> block) = 0;
};

/// Runs `work` in the background and then `completion`, with its result, on the
/// main queue. `work` is copyable; the result need not be and is never copied. What
/// `completion` owns is used and released on the main thread only.
template <typename Work, typename Completion>
void runInBackground(Work work, Completion completion) {
  // Queues may copy their blocks, and a copy may end on any thread: the copies
  // share the completion, and the main thread takes it out.
  auto kept = std::make_shared<std::optional<Completion>>(std::move(completion));
  BackgroundWork::shared().async([work = std::move(work), kept = std::move(kept)]() mutable {
    auto result = std::make_shared<std::invoke_result_t<Work&>>(work());
    MainQueue::main().async([kept, result] {
      Completion taken = *std::exchange(*kept, std::nullopt);
      taken(std::move(*result));
    });
  });
}

}  // namespace vembrix
