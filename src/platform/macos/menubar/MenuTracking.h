#pragma once

#import <AppKit/AppKit.h>

#include "platform/Token.h"
#include "platform/macos/Arc.h"

namespace vembrix {

// What runs while a menu is open. Main thread.

/// A timer that also fires while a menu is open. It runs until it is invalidated and
/// owns the block.
NSTimer* startMenuTimer(double interval, void (^block)(void));

/// Hands every key press that the program gets while a menu is open to the handler, in
/// place of the menu, until the token is dropped, which the handler may do. It returns
/// whether it wants more of those that wait.
[[nodiscard]] Token takeMenuKeyPresses(bool (^handler)(NSEvent* event));

}  // namespace vembrix
