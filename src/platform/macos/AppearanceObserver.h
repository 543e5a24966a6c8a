#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

/// Runs a block on the main thread after each change of the effective appearance of the application
/// or a view, with the new one in effect. Owns both; the block's owner owns the observer and
/// invalidates it before its own end.
@interface VembrixAppearanceObserver : NSObject

- (instancetype)initWithSubject:(NSObject<NSAppearanceCustomization>*)subject
                        handler:(void (^)(void))handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Ends the observation; the block is not called any more.
- (void)invalidate;

@end
