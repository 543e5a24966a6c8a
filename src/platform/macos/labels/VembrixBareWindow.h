#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

#include "platform/MainQueue.h"
#include "platform/WindowTraits.h"
#import "platform/macos/Arc.h"

/// What labels and the tour's overlay have in common: a clear window without a
/// border but with a shadow, as its content is shaped, that takes neither clicks nor
/// the keyboard and is in no list of windows. Main thread.
///
/// Owned by the C++ object that made it, and by AppKit while a fade runs; reaches back
/// to nobody. Its owner ends it by dismiss.
@interface VembrixBareWindow : NSWindow

/// On no desktop yet. Points, global coordinates; bits of CollectionBehavior.
- (instancetype)initWithFrame:(NSRect)frame
                        level:(vembrix::WindowLevel)level
                     behavior:(std::uint64_t)behavior;

/// Shown at once; the same frame costs nothing.
- (void)placeAt:(NSRect)frame;

- (void)setBehavior:(std::uint64_t)behavior;

/// The alpha value, exactly as it was set or faded to; in the middle of a fade what
/// that has come to. Setting it ends a fade.
@property(nonatomic) double opacity;

/// From what it is now; takes the place of a fade that runs. The completion is called
/// once, on the main thread, when the value is reached; not if another value takes its
/// place. It may be called at once.
- (void)fadeTo:(double)opacity
      duration:(vembrix::Duration)duration
    completion:(void (^)(void))completion;

/// Before the other windows of its level; the focus stays.
- (void)showInFront;

/// What is shown casts another shadow now.
- (void)shapeDidChange;

/// Ends a fade and leaves the desktop for good.
- (void)dismiss;

@end
