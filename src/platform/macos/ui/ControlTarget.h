#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/Arc.h"

/// What controls do when the user changes them. Controls hold their target weakly:
/// the page or the view that made the controls owns it and invalidates it before it
/// goes. The block holds nothing of AppKit's, so that there is no cycle.
@interface VembrixControlTarget : NSObject

- (instancetype)initWithHandler:(void (^)(NSControl* sender))handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// The action. The sender, the target and the block live until it has returned,
/// whatever the block replaces.
- (void)controlDidAct:(NSControl*)sender;

/// The block is not called any more.
- (void)invalidate;

@end

namespace vembrix {

/// Makes the target what the control tells of its changes.
void setTarget(NSControl* control, VembrixControlTarget* target);

/// Keeps the objects until AppKit is done with the event at hand. A control that
/// is replaced from within its own action is still tracking the mouse, or a menu,
/// when the action returns.
void keepUntilEventEnds(NSArray* objects);

}  // namespace vembrix
