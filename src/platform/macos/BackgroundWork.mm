#import "platform/BackgroundWork.h"

#include <dispatch/dispatch.h>

#include <memory>
#include <utility>

#import "platform/macos/support/Arc.h"

namespace vembrix {
namespace {

/// The system's global queue, which owns each block until it has run.
class DispatchBackgroundWork : public BackgroundWork {
 public:
  void async(std::function<void()> block) override {
    // Shared, since a block of the system copies what it captures: there is one
    // block, which is emptied where it runs.
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
