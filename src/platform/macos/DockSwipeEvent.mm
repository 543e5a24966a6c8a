#import "platform/DockSwipeEvent.h"

#import <AppKit/AppKit.h>
#include <mach/mach_time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/MainQueue.h"
#import "platform/macos/support/Arc.h"
#import "platform/macos/support/CFOwned.h"
#import "platform/macos/support/SystemVersion.h"
#include "platform/macos/windowserver/SwipeConventions.h"
#import "platform/portable/TrackpadReport.h"

namespace vembrix {
namespace {

void postNow(CGEventRef event) { CGEventPost(kCGSessionEventTap, event); }

/// Returns the field of that number. The header names no field of a gesture, but its type holds any
/// number.
CGEventField fieldOf(int number) {
  // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange)
  return static_cast<CGEventField>(number);
}

double doubleField(CGEventRef event, int field) {
  return CGEventGetDoubleValueField(event, fieldOf(field));
}

/// Posts swipes to a Dock that requires the trackpad's report with them: from macOS 27 on. Owns
/// only what it remembers of the present swipe. Main thread.
class ReportedSwipes {
 public:
  static ReportedSwipes& shared() {
    static auto& swipes = *new ReportedSwipes;
    return swipes;
  }

  void post(CGEventRef event) {
    const std::int64_t phase = CGEventGetIntegerValueField(event, fieldOf(dockswipe::GesturePhase));
    if (phase == dockswipe::Begin) sign_ = reportSign(isScrollingNatural());
    auto reported = reportedCopy(event, phase);
    if (reported) postInTurn(std::move(reported));
  }

 private:
  using Clock = std::chrono::steady_clock;

  /// Fields that a trackpad's own events have.
  enum TrackpadField : int { FingerPosition = 125, PhaseAgain = 134, Flavor = 138, Time = 169 };

  /// Returns the setting for natural scrolling, which is on by default.
  static bool isScrollingNatural() {
    @autoreleasepool {
      id value =
          [NSUserDefaults.standardUserDefaults objectForKey:@"com.apple.swipescrolldirection"];
      return ![value isKindOfClass:[NSNumber class]] || [value boolValue];
    }
  }

  /// Returns the progress with which a swipe arrives without a transition. With less, the menu bar
  /// and the windows of the new Space stay unpainted.
  static double visibleProgress(double progress) {
    constexpr double kShortest = 1.0 / 65536;
    return std::abs(progress) < kShortest ? std::copysign(1.0, progress) : progress;
  }

  CFOwned<CGEventRef> reportedCopy(CGEventRef event, std::int64_t phase) const {
    TrackpadSwipe swipe{
        .timestamp = mach_absolute_time(),
        .phase = phase,
        .progress = sign_ * visibleProgress(doubleField(event, dockswipe::Progress))};
    if (swipe.isLast()) swipe.velocity = sign_ * doubleField(event, dockswipe::VelocityX);
    auto copy = CFOwned<CGEventRef>::adopt(CGEventCreateCopy(event));
    if (!copy) return {};
    setFields(copy.get(), swipe);
    auto reported = withReport(copy.get(), swipe);
    if (reported) markAsOwn(reported.get());
    return reported;
  }

  static void setFields(CGEventRef event, const TrackpadSwipe& swipe) {
    const auto setInteger = [event](int field, std::int64_t value) {
      CGEventSetIntegerValueField(event, fieldOf(field), value);
    };
    const auto setDouble = [event](int field, double value) {
      CGEventSetDoubleValueField(event, fieldOf(field), value);
    };
    setInteger(PhaseAgain, swipe.phase);
    setDouble(Flavor, TrackpadSwipe::flavor);
    setDouble(Time, static_cast<double>(swipe.timestamp));
    setDouble(FingerPosition, TrackpadSwipe::fingerPosition);
    setDouble(dockswipe::Progress, swipe.progress);
    setDouble(dockswipe::VelocityX, swipe.velocity);
    setDouble(dockswipe::VelocityY, 0);
  }

  static CFOwned<CGEventRef> withReport(CGEventRef event, const TrackpadSwipe& swipe) {
    const auto data = CFOwned<CFDataRef>::adopt(CGEventCreateData(kCFAllocatorDefault, event));
    if (!data) return {};
    const std::span<const std::uint8_t> bytes(
        CFDataGetBytePtr(data.get()), static_cast<std::size_t>(CFDataGetLength(data.get())));
    const std::vector<std::uint8_t> reported = withTrackpadReport(bytes, trackpadReport(swipe));
    // An event in an unknown format is posted as it is.
    if (reported.empty()) return CFOwned<CGEventRef>::retain(event);
    const auto reportedData = CFOwned<CFDataRef>::adopt(
        CFDataCreate(kCFAllocatorDefault, reported.data(), static_cast<CFIndex>(reported.size())));
    if (!reportedData) return CFOwned<CGEventRef>::retain(event);
    auto made =
        CFOwned<CGEventRef>::adopt(CGEventCreateFromData(kCFAllocatorDefault, reportedData.get()));
    return made ? std::move(made) : CFOwned<CGEventRef>::retain(event);
  }

  /// Marks the event by the field from which the tap recognises this program's own swipes.
  /// Serialising may have removed it.
  static void markAsOwn(CGEventRef event) {
    CGEventSetIntegerValueField(event, fieldOf(dockswipe::SourceProcess), getpid());
  }

  /// Posts events a few milliseconds apart, because the Dock misses those that come sooner.
  void postInTurn(CFOwned<CGEventRef> event) {
    constexpr std::chrono::milliseconds kPause{10};
    const Clock::time_point now = Clock::now();
    const Clock::time_point turn = std::max(now, nextTurn_);
    nextTurn_ = turn + kPause;
    if (turn == now) {
      postNow(event.get());
      return;
    }
    const auto shared = std::make_shared<const CFOwned<CGEventRef>>(std::move(event));
    MainQueue::main().after(turn - now, [shared] { postNow(shared->get()); });
  }

  /// The sign for the present swipe: the user may change the setting during it.
  double sign_ = 1;
  Clock::time_point nextTurn_;
};

/// Owns the native event. Posting sends a copy: the window server keeps nothing of this process,
/// and the event may be changed and posted again.
class SystemDockSwipeEvent : public DockSwipeEvent {
 public:
  explicit SystemDockSwipeEvent(CFOwned<CGEventRef> event) : event_(std::move(event)) {}

  void setIntegerField(int field, std::int64_t value) override {
    CGEventSetIntegerValueField(event_.get(), fieldOf(field), value);
  }

  void setDoubleField(int field, double value) override {
    CGEventSetDoubleValueField(event_.get(), fieldOf(field), value);
  }

  void post() override {
    if (isAtLeast(SystemRelease::GoldenGate)) {
      ReportedSwipes::shared().post(event_.get());
    } else {
      postNow(event_.get());
    }
  }

 private:
  const CFOwned<CGEventRef> event_;
};

}  // namespace

std::unique_ptr<DockSwipeEvent> DockSwipeEvent::create() {
  auto event = CFOwned<CGEventRef>::adopt(CGEventCreate(nullptr));
  if (!event) return nullptr;
  return std::make_unique<SystemDockSwipeEvent>(std::move(event));
}

}  // namespace vembrix
