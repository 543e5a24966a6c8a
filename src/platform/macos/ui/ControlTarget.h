#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

/// The target of a control, which runs a block when the user changes it. Controls hold it weakly:
/// the page or view that created the control owns it and invalidates it before its own end. The
/// block holds no AppKit objects, so that there is no cycle.
@interface VembrixControlTarget : NSObject

- (instancetype)initWithHandler:(void (^)(NSControl* sender))handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// The control's action. Sender, target and block live until it returns, even if the block replaces
/// them.
- (void)controlDidAct:(NSControl*)sender;

/// Ends the calls of the block.
- (void)invalidate;

@end

namespace vembrix {

/// Sets the control's target and action.
void setTarget(NSControl* control, VembrixControlTarget* target);

/// Retains the objects until the current event has ended, since a control that is replaced by its
/// own action may still track the mouse or a menu.
void keepUntilEventEnds(NSArray* objects);

}  // namespace vembrix
