#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "platform/BackgroundWork.h"

namespace vembrix {

/// Background work that waits until a test runs it, each block on a thread of its own.
class EmbeddedBackgroundWork : public BackgroundWork {
 public:
  /// The threads behind BackgroundWork::shared().
  static EmbeddedBackgroundWork& shared();

  void async(std::function<void()> block) override { waiting_.push_back(std::move(block)); }

  /// Number of blocks that have not run yet.
  std::size_t waitingCount() const { return waiting_.size(); }

  /// Runs the waiting blocks in parallel, each on its own thread, and waits for their end.
  void run();

 private:
  std::vector<std::function<void()>> waiting_;
};

}  // namespace vembrix
