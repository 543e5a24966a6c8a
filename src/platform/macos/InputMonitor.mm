#import "platform/InputMonitor.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

#import "platform/macos/Arc.h"

namespace vembrix {
namespace {

static_assert(std::uint64_t{LeftMouseDown} == NSEventMaskLeftMouseDown);
static_assert(std::uint64_t{RightMouseDown} == NSEventMaskRightMouseDown);
static_assert(std::uint64_t{MouseMoved} == NSEventMaskMouseMoved);
static_assert(std::uint64_t{KeyDown} == NSEventMaskKeyDown);
static_assert(std::uint64_t{OtherMouseDown} == NSEventMaskOtherMouseDown);

/// Whom a native monitor tells. Owned by the monitor's block and by the token.
struct Listener {
  std::function<void()> handler;
  bool isDropped = false;
};

/// AppKit's monitors of what goes to other programs. AppKit owns a monitor from
/// the call that adds it to the one that removes it, which is the token's.
class SystemInputMonitor : public InputMonitor {
 public:
  Token addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) override {
    @autoreleasepool {
      const auto listener = std::make_shared<Listener>(Listener{std::move(handler)});
      // Never looks at the event: what was typed is not this program's business.
      id monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:mask
                                                          handler:^(NSEvent*) {
                                                            tell(listener);
                                                          }];
      if (!monitor) return {};
      return Token([listener, monitor] {
        @autoreleasepool {
          listener->isDropped = true;
          [NSEvent removeMonitor:monitor];
        }
      });
    }
  }

  Point mouseLocation() const override {
    const NSPoint location = NSEvent.mouseLocation;
    return {location.x, location.y};
  }

 private:
  /// By value: the handler may drop the token, and with it the block's own share.
  /// The system promises nothing about a monitor that is removed during an event.
  static void tell(std::shared_ptr<Listener> listener) {
    @autoreleasepool {
      if (!listener->isDropped) listener->handler();
    }
  }
};

}  // namespace

InputMonitor& InputMonitor::shared() {
  static auto& monitor = *new SystemInputMonitor;
  return monitor;
}

}  // namespace vembrix
