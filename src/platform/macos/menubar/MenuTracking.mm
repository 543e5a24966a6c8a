#import "platform/macos/menubar/MenuTracking.h"

#include <memory>

#import "platform/macos/support/CFOwned.h"

namespace vembrix {
namespace {

/// Returns the next event of the queue without removing it; nil if there is none.
NSEvent* nextWaitingEvent() {
  return [NSApp nextEventMatchingMask:NSEventMaskAny
                            untilDate:nil
                               inMode:NSEventTrackingRunLoopMode
                              dequeue:NO];
}

/// Takes key presses only from the front of the queue. To find those behind other events, AppKit
/// would fetch all of these, and an open menu gets very many.
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
                                              // The event that opened the menu, and its pool, last
                                              // as long as the menu is open.
                                              @autoreleasepool {
                                                block();
                                              }
                                            }];
  // An open menu runs the loop in the first of these modes. The common modes, which usually include
  // it, apply while it opens and closes.
  [NSRunLoop.currentRunLoop addTimer:timer forMode:NSEventTrackingRunLoopMode];
  [NSRunLoop.currentRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
  return timer;
}

Token takeMenuKeyPresses(bool (^handler)(NSEvent* event)) {
  using Observer = CFOwned<CFRunLoopObserverRef>;
  // Shared, because the function that ends a token can be copied.
  const auto observer =
      std::make_shared<const Observer>(Observer::adopt(CFRunLoopObserverCreateWithHandler(
          kCFAllocatorDefault, kCFRunLoopBeforeSources | kCFRunLoopBeforeWaiting,
          /*repeats=*/true, /*order=*/0, ^(CFRunLoopObserverRef, CFRunLoopActivity) {
            @autoreleasepool {
              // A strong reference, because the observer may be removed while it runs.
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
