#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

/// Runs a block on the main thread after each change of the effective appearance of the application
/// or a view, while the new one is in effect. Owns both; the block's owner owns the observer and
/// must invalidate it before its own end.
@interface VembrixAppearanceObserver : NSObject

- (instancetype)initWithSubject:(NSObject<NSAppearanceCustomization>*)subject
                        handler:(void (^)(void))handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Ends the observation; the block is not called again.
- (void)invalidate;

@end
