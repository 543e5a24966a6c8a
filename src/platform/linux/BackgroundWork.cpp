#include "platform/BackgroundWork.h"

#include <chrono>
#include <system_error>
#include <thread>

namespace vembrix {
namespace {

/// Starts a thread for each block: there are few, and each may wait for long.
class DetachedThreads : public BackgroundWork {
 public:
  void async(std::function<void()> block) override {
    try {
      std::thread(block).detach();
    } catch (const std::system_error&) {
      // The system has no free thread. It may have one later.
      MainQueue::main().after(
          kRetryDelay, [this, block = std::move(block)]() mutable { async(std::move(block)); });
    }
  }

 private:
  static constexpr std::chrono::seconds kRetryDelay{1};
};

}  // namespace

BackgroundWork& BackgroundWork::shared() {
  // Never destroyed: blocks may run until the very end.
  static auto& work = *new DetachedThreads;
  return work;
}

}  // namespace vembrix
