#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

#include "platform/MainQueue.h"
#include "platform/WindowTraits.h"
#import "platform/macos/support/Arc.h"

/// The window of labels and of the tour's overlay: clear, borderless, with a shadow in the shape of
/// its content. Takes neither clicks nor the keyboard and appears in no list of windows. Main
/// thread.
///
/// Owned by the C++ object that created it, which ends it by dismiss, and by AppKit during a fade.
/// Holds no reference to its owner.
@interface VembrixBareWindow : NSWindow

/// Creates a window that is on no desktop yet. `frame` is in points, global coordinates; the
/// behaviour is bits of CollectionBehavior.
- (instancetype)initWithFrame:(NSRect)frame
                        level:(vembrix::WindowLevel)level
                     behavior:(std::uint64_t)behavior;

/// Moves the window at once; an equal frame costs nothing.
- (void)placeAt:(NSRect)frame;

- (void)setBehavior:(std::uint64_t)behavior;

/// The alpha value: exactly the one set or faded to, or during a fade the present one. Setting it
/// ends a fade.
@property(nonatomic) double opacity;

/// Fades from the present value; replaces a running fade. Calls the completion once, on the main
/// thread, when the value is reached, possibly at once; never if another value replaces it.
- (void)fadeTo:(double)opacity
      duration:(vembrix::Duration)duration
    completion:(void (^)(void))completion;

/// Shows the window in front of the others of its level. Does not take the focus.
- (void)showInFront;

/// Updates the shadow after a change of the content's shape.
- (void)shapeDidChange;

/// Ends a fade and removes the window for good.
- (void)dismiss;

@end
