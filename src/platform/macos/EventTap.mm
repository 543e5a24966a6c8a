#import "platform/EventTap.h"

#import <AppKit/AppKit.h>
#include <unistd.h>

#include <chrono>
#include <utility>

#include "platform/DockSwipeEvent.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#import "platform/macos/TrustObserver.h"
#import "platform/macos/support/Arc.h"
#import "platform/macos/support/CFOwned.h"
#import "platform/macos/support/Conversions.h"
#import "platform/macos/support/SystemVersion.h"
#include "platform/macos/windowserver/SwipeConventions.h"

namespace vembrix {
namespace {

static_assert(EventTap::disabledByTimeout == kCGEventTapDisabledByTimeout);
static_assert(EventTap::disabledByUserInput == kCGEventTapDisabledByUserInput);

/// Borrows the native event for the time of a call. Reads only the fields that the handler asks
/// for. Without an event it has no fields.
class SystemTappedEvent final : public TappedEvent {
 public:
  explicit SystemTappedEvent(CGEventRef event) : event_(event) {}

  std::int64_t integerField(int field) const override {
    if (!event_) return 0;
    const std::int64_t value =
        CGEventGetIntegerValueField(event_, static_cast<CGEventField>(field));
    return field == dockswipe::SourceProcess ? processFrom(value) : value;
  }

  double doubleField(int field) const override {
    return event_ ? CGEventGetDoubleValueField(event_, static_cast<CGEventField>(field)) : 0;
  }

 private:
  static std::int64_t processFrom(std::int64_t named) {
    static const DeviceEvents devices = isAtLeast(SystemRelease::GoldenGate)
                                            ? DeviceEvents::MayNameAProcess
                                            : DeviceEvents::NameNoProcess;
    static const std::int64_t own = getpid();
    return postingProcess(devices, named, own);
  }

  CGEventRef const event_;
};

/// The least time between two attempts to enable the tap. Without the permission, or under a
/// lasting load, the system disables a tap and reports that as soon as it is enabled: an endless
/// loop.
constexpr std::chrono::seconds kPause{1};

/// Owns the tap's port and the source by which the main run loop serves it. The
/// system knows the object by its address, without owning it: the destructor ends
/// that before the address becomes invalid.
///
/// A tap whose permission has been taken away can hold up the whole session's input, so it is
/// disabled then, and stays so until the permission is back. The system does not always report that
/// sleep or another user's session has disabled the tap, so it checks itself after these.
class SystemEventTap : public EventTap {
 public:
  explicit SystemEventTap(Handler handler)
      : handler_(std::make_shared<const Handler>(std::move(handler))),
        port_(CFOwned<CFMachPortRef>::adopt(
            CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionListenOnly,
                             kCGEventMaskForAllEvents, &SystemEventTap::receive, this))) {
    if (!port_) return;
    // The system creates taps enabled.
    CGEventTapEnable(port_.get(), false);
    source_ = CFOwned<CFRunLoopSourceRef>::adopt(
        CFMachPortCreateRunLoopSource(kCFAllocatorDefault, port_.get(), /*order=*/0));
  }

  ~SystemEventTap() override {
    if (!port_) return;
    CGEventTapEnable(port_.get(), false);
    if (source_) CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    // Discards the messages that still wait in the port.
    CFMachPortInvalidate(port_.get());
  }

  SystemEventTap(const SystemEventTap&) = delete;
  SystemEventTap& operator=(const SystemEventTap&) = delete;

  /// Returns whether the user has given one of the two permissions, either of which is enough for a
  /// tap that only listens. The system does not prompt for this.
  static bool isAllowed() { return AXIsProcessTrusted() || CGPreflightListenEventAccess(); }

  [[nodiscard]] bool isOpen() const { return static_cast<bool>(source_); }

  void enable() override {
    if (isServed_) {
      enableSoon();
      return;
    }
    isServed_ = true;
    // Added only now, so that no event arrives earlier. A few events may wait in the port since the
    // tap was created, among them the message that it was disabled; enabling it once more does no
    // harm.
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    enableNow();
    lookAfterItself();
  }

 private:
  using Clock = std::chrono::steady_clock;

  void enableNow() {
    enabledAt_ = Clock::now();
    CGEventTapEnable(port_.get(), true);
  }

  void enableSoon() {
    if (!isAllowed()) return;
    if (Clock::now() - enabledAt_ >= kPause) {
      enableNow();
    } else {
      later_ = MainQueue::main().schedule(kPause, [this] { enableNow(); });
    }
  }

  void disable() {
    later_.reset();
    CGEventTapEnable(port_.get(), false);
  }

  void lookAfterItself() {
    const auto look = [this] {
      if (!isAllowed()) {
        disable();
      } else if (!CGEventTapIsEnabled(port_.get())) {
        enableSoon();
      }
    };
    NotificationCenter& workspace = NotificationCenter::workspace();
    wake_ = workspace.addObserver(notification::kDidWake, look);
    session_ =
        workspace.addObserver(utf8String(NSWorkspaceSessionDidBecomeActiveNotification), look);
    trust_ = observeTrust(look);
  }

  /// Called by the run loop for every event of the session.
  static CGEventRef receive(CGEventTapProxy, CGEventType type, CGEventRef event, void* address) {
    // The run loop may deliver many events before AppKit empties its own pool.
    @autoreleasepool {
      const auto* tap = static_cast<SystemEventTap*>(address);
      // Copies, because a handler may drop its tap, which owns both.
      const std::shared_ptr<const Handler> handler = tap->handler_;
      const auto port = CFOwned<CFMachPortRef>::retain(tap->port_.get());
      const bool hasFields =
          type != kCGEventTapDisabledByTimeout && type != kCGEventTapDisabledByUserInput;
      (*handler)(type, SystemTappedEvent(hasFields ? event : nullptr));
    }
    return event;
  }

  const std::shared_ptr<const Handler> handler_;
  const CFOwned<CFMachPortRef> port_;
  CFOwned<CFRunLoopSourceRef> source_;
  bool isServed_ = false;
  Clock::time_point enabledAt_;
  WorkItem later_;
  Observation wake_;
  Observation session_;
  Observation trust_;
};

}  // namespace

std::unique_ptr<EventTap> EventTap::create(Handler handler) {
  // Without the permission, the attempt would make the system ask for another one, as if Vembrix
  // read what is typed.
  if (!SystemEventTap::isAllowed()) return nullptr;
  auto tap = std::make_unique<SystemEventTap>(std::move(handler));
  if (!tap->isOpen()) return nullptr;
  return tap;
}

}  // namespace vembrix
