#pragma once

#import <AppKit/AppKit.h>

#include "platform/Token.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

// Timers and key presses while a menu is open. Main thread.

/// Starts a timer that also fires while a menu is open. It owns the block and runs until it is
/// invalidated.
NSTimer* startMenuTimer(double interval, void (^block)(void));

/// Passes every key press during an open menu to the handler instead of the menu, until the token
/// is dropped, possibly by the handler. The handler returns whether to pass it further queued key
/// presses.
[[nodiscard]] Token takeMenuKeyPresses(bool (^handler)(NSEvent* event));

}  // namespace vembrix
