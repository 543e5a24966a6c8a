#import "platform/BackgroundWork.h"

#include <dispatch/dispatch.h>

#include <memory>
#include <utility>

#import "platform/macos/support/Arc.h"

namespace vembrix {
namespace {

/// Runs blocks on the system's global queue, which owns each until it has run.
class DispatchBackgroundWork : public BackgroundWork {
 public:
  void async(std::function<void()> block) override {
    // Shared, because the system's block copies what it captures. All copies refer to one function,
    // which is emptied when it runs.
    const auto work = std::make_shared<std::function<void()>>(std::move(block));
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
      @autoreleasepool {
        if (auto due = std::exchange(*work, nullptr)) due();
      }
    });
  }
};

}  // namespace

BackgroundWork& BackgroundWork::shared() {
  static auto& work = *new DispatchBackgroundWork;
  return work;
}

}  // namespace vembrix
