#import "platform/InputMonitor.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>
#include <vector>

#import "platform/macos/TrustObserver.h"
#import "platform/macos/support/Arc.h"

namespace vembrix {
namespace {

static_assert(std::uint64_t{LeftMouseDown} == NSEventMaskLeftMouseDown);
static_assert(std::uint64_t{RightMouseDown} == NSEventMaskRightMouseDown);
static_assert(std::uint64_t{MouseMoved} == NSEventMaskMouseMoved);
static_assert(std::uint64_t{KeyDown} == NSEventMaskKeyDown);
static_assert(std::uint64_t{OtherMouseDown} == NSEventMaskOtherMouseDown);

/// The receiver of a native monitor's events. Owned by the monitor's block and by the token; owns
/// the monitor in turn until the token is dropped.
struct Listener {
  std::uint64_t mask = 0;
  std::function<void()> handler;
  id monitor = nil;
  bool isDropped = false;
};

/// AppKit's monitors of events for other programs. AppKit owns a monitor from
/// the call that adds it to the one that removes it, which the token makes.
///
/// It is undocumented whether a monitor that was added without the permission for key
/// presses receives them once the permission is given, so monitors of keys are then added again.
class SystemInputMonitor : public InputMonitor {
 public:
  Token addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) override {
    @autoreleasepool {
      const auto listener = std::make_shared<Listener>(Listener{mask, std::move(handler)});
      listener->monitor = addMonitor(listener);
      if (!listener->monitor) return {};
      if (mask & KeyDown) followTrust(listener);
      return Token([listener] {
        @autoreleasepool {
          listener->isDropped = true;
          [NSEvent removeMonitor:std::exchange(listener->monitor, nil)];
        }
      });
    }
  }

  Point mouseLocation() const override {
    const NSPoint location = NSEvent.mouseLocation;
    return {location.x, location.y};
  }

 private:
  /// By value: blocks keep copies of values only, which clang-tidy does not know.
  // NOLINTNEXTLINE(performance-unnecessary-value-param)
  static id addMonitor(std::shared_ptr<Listener> listener) {
    // Does not look at the event: what was typed is not this program's business.
    return [NSEvent addGlobalMonitorForEventsMatchingMask:listener->mask
                                                  handler:^(NSEvent*) {
                                                    tell(listener);
                                                  }];
  }

  void followTrust(const std::shared_ptr<Listener>& listener) {
    std::erase_if(keyListeners_, [](const auto& known) { return known.expired(); });
    keyListeners_.push_back(listener);
    if (!trust_) trust_ = observeTrust([this] { addKeyMonitorsAnew(); });
  }

  void addKeyMonitorsAnew() {
    for (const auto& known : keyListeners_) {
      const auto listener = known.lock();
      if (!listener || listener->isDropped) continue;
      id added = addMonitor(listener);
      if (added) [NSEvent removeMonitor:std::exchange(listener->monitor, added)];
    }
  }

  /// By value: the handler may drop the token, and with it the block's own reference. The system
  /// promises nothing about a monitor that is removed during an event.
  // NOLINTNEXTLINE(performance-unnecessary-value-param)
  static void tell(std::shared_ptr<Listener> listener) {
    @autoreleasepool {
      if (!listener->isDropped) listener->handler();
    }
  }

  std::vector<std::weak_ptr<Listener>> keyListeners_;
  Observation trust_;
};

}  // namespace

InputMonitor& InputMonitor::shared() {
  static auto& monitor = *new SystemInputMonitor;
  return monitor;
}

}  // namespace vembrix
