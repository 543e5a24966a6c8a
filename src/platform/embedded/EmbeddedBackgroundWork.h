#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "platform/BackgroundWork.h"

namespace vembrix {

/// Background work that waits until a test lets it happen, on a thread of its
/// own.
class EmbeddedBackgroundWork : public BackgroundWork {
 public:
  /// The threads behind BackgroundWork::shared().
  static EmbeddedBackgroundWork& shared();

  void async(std::function<void()> block) override { waiting_.push_back(std::move(block)); }

  /// Blocks that were given and not yet run.
  std::size_t waitingCount() const { return waiting_.size(); }

  /// Runs what waits, each on another thread, beside each other, to its end.
  void run();

 private:
  std::vector<std::function<void()>> waiting_;
};

}  // namespace vembrix
