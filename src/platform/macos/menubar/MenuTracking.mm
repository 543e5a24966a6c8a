#import "platform/macos/menubar/MenuTracking.h"

#include <memory>

#import "platform/macos/support/CFOwned.h"

namespace vembrix {
namespace {

/// The next event of the queue, which stays there; nil when there is none.
NSEvent* nextWaitingEvent() {
  return [NSApp nextEventMatchingMask:NSEventMaskAny
                            untilDate:nil
                               inMode:NSEventTrackingRunLoopMode
                              dequeue:NO];
}

/// Only what is next: to look for key presses behind other events, AppKit would fetch
/// all of these, and an open menu gets a great many.
void takeWaitingKeyPresses(bool (^handler)(NSEvent* event)) {
  while (nextWaitingEvent().type == NSEventTypeKeyDown) {
    NSEvent* press = [NSApp nextEventMatchingMask:NSEventMaskKeyDown
                                        untilDate:nil
                                           inMode:NSEventTrackingRunLoopMode
                                          dequeue:YES];
    if (!press || !handler(press)) return;
  }
}

}  // namespace

NSTimer* startMenuTimer(double interval, void (^block)(void)) {
  NSTimer* timer = [NSTimer timerWithTimeInterval:interval
                                          repeats:YES
                                            block:^(NSTimer*) {
                                              // The event that opened the menu, and its
                                              // pool, last as long as the menu is open.
                                              @autoreleasepool {
                                                block();
                                              }
                                            }];
  // An open menu runs the loop in the first mode; the common ones, of which it is
  // usually one, hold also while it opens and closes.
  [NSRunLoop.currentRunLoop addTimer:timer forMode:NSEventTrackingRunLoopMode];
  [NSRunLoop.currentRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
  return timer;
}

Token takeMenuKeyPresses(bool (^handler)(NSEvent* event)) {
  using Observer = CFOwned<CFRunLoopObserverRef>;
  // Shared, since a token's end can be copied.
  const auto observer =
      std::make_shared<const Observer>(Observer::adopt(CFRunLoopObserverCreateWithHandler(
          kCFAllocatorDefault, kCFRunLoopBeforeSources | kCFRunLoopBeforeWaiting,
          /*repeats=*/true, /*order=*/0, ^(CFRunLoopObserverRef, CFRunLoopActivity) {
            @autoreleasepool {
              // A strong reference: the observer may end while it runs.
              bool (^const strongHandler)(NSEvent*) = handler;
              takeWaitingKeyPresses(strongHandler);
            }
          })));
  if (!*observer) return {};
  CFRunLoopAddObserver(CFRunLoopGetMain(), observer->get(),
                       (__bridge CFRunLoopMode)NSEventTrackingRunLoopMode);
  return Token([observer] { CFRunLoopObserverInvalidate(observer->get()); });
}

}  // namespace vembrix
