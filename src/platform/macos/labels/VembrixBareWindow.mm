#import "platform/macos/labels/VembrixBareWindow.h"

#include <chrono>
#include <cmath>

using namespace vembrix;

namespace {

static_assert(static_cast<int>(WindowLevel::Floating) == kCGFloatingWindowLevel);
static_assert(static_cast<int>(WindowLevel::Status) == kCGStatusWindowLevel);

static_assert(CanJoinAllSpaces == NSUInteger{NSWindowCollectionBehaviorCanJoinAllSpaces});
static_assert(Managed == NSUInteger{NSWindowCollectionBehaviorManaged});
static_assert(Transient == NSUInteger{NSWindowCollectionBehaviorTransient});
static_assert(Stationary == NSUInteger{NSWindowCollectionBehaviorStationary});
static_assert(IgnoresCycle == NSUInteger{NSWindowCollectionBehaviorIgnoresCycle});
static_assert(FullScreenAuxiliary == NSUInteger{NSWindowCollectionBehaviorFullScreenAuxiliary});

/// Half of the smallest visible step. AppKit may keep an alpha value with fewer digits than it was
/// given.
constexpr double kSameOpacity = 0.5 / 255;

}  // namespace

@implementation VembrixBareWindow {
  /// The alpha value that was set last, or the target of the fade.
  double _opacity;
  BOOL _isFading;
  /// Distinguishes a fade from the ones that it replaced.
  NSUInteger _fadeNumber;
  /// The last frame given to placeAt:, and the frame that AppKit made of it.
  NSRect _wantedFrame;
  NSRect _placedFrame;
}

- (instancetype)initWithFrame:(NSRect)frame
                        level:(WindowLevel)level
                     behavior:(std::uint64_t)behavior {
  // Not deferred, so that the window server knows the window, and its number, from now on.
  self = [super initWithContentRect:frame
                          styleMask:NSWindowStyleMaskBorderless
                            backing:NSBackingStoreBuffered
                              defer:NO];
  if (!self) return nil;
  _wantedFrame = frame;
  _placedFrame = self.frame;
  _opacity = 1;
  self.releasedWhenClosed = NO;
  self.opaque = NO;
  self.backgroundColor = NSColor.clearColor;
  self.hasShadow = YES;
  self.ignoresMouseEvents = YES;
  self.animationBehavior = NSWindowAnimationBehaviorNone;
  self.level = static_cast<NSWindowLevel>(level);
  self.collectionBehavior = static_cast<NSWindowCollectionBehavior>(behavior);
  [self stayOutOfTheWay];
  return self;
}

/// Excludes the window from saving, from lists of windows, from being hidden along with other
/// programs' windows, and from VoiceOver.
- (void)stayOutOfTheWay {
  self.restorable = NO;
  self.tabbingMode = NSWindowTabbingModeDisallowed;
  self.excludedFromWindowsMenu = YES;
  self.hidesOnDeactivate = NO;
  self.canHide = NO;
  self.accessibilityElement = NO;
  self.accessibilityHidden = YES;
}

- (NSArray*)accessibilityChildren {
  return @[];
}

- (BOOL)canBecomeKeyWindow {
  return NO;
}

- (BOOL)canBecomeMainWindow {
  return NO;
}

/// Returns the frame unchanged: the product decides where the window is, even over the menu bar.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)screen {
  return frame;
}

- (void)placeAt:(NSRect)frame {
  // AppKit rounds frames, and moves windows by itself when a screen is removed.
  if (NSEqualRects(frame, _wantedFrame) && NSEqualRects(self.frame, _placedFrame)) return;
  const NSSize oldSize = self.frame.size;
  [self setFrame:frame display:YES];
  _wantedFrame = frame;
  _placedFrame = self.frame;
  if (!NSEqualSizes(oldSize, _placedFrame.size)) [self shapeDidChange];
}

- (void)setBehavior:(std::uint64_t)behavior {
  const auto native = static_cast<NSWindowCollectionBehavior>(behavior);
  if (self.collectionBehavior != native) self.collectionBehavior = native;
}

#pragma mark The alpha value

- (double)opacity {
  const CGFloat present = self.alphaValue;
  return std::abs(present - _opacity) <= kSameOpacity ? _opacity : present;
}

- (void)setOpacity:(double)opacity {
  if (!_isFading && opacity == self.opacity) return;
  if (_isFading) [self stopFadingAt:opacity];
  _opacity = opacity;
  self.alphaValue = opacity;
}

/// Ends the fade. Setting the property alone would not: AppKit ends an animation only by a group
/// without a duration.
- (void)stopFadingAt:(double)opacity {
  _isFading = NO;
  _fadeNumber += 1;
  [NSAnimationContext runAnimationGroup:^(NSAnimationContext* context) {
    context.duration = 0;
    context.allowsImplicitAnimation = NO;
    self.animator.alphaValue = opacity;
  }];
}

- (void)fadeTo:(double)opacity
      duration:(vembrix::Duration)duration
    completion:(void (^)(void))completion {
  if (duration <= vembrix::Duration::zero() || (!_isFading && opacity == self.opacity)) {
    self.opacity = opacity;
    if (completion) completion();
    return;
  }
  _opacity = opacity;
  _isFading = YES;
  const NSUInteger number = ++_fadeNumber;
  __weak VembrixBareWindow* weakSelf = self;
  [NSAnimationContext
      runAnimationGroup:^(NSAnimationContext* context) {
        context.duration = std::chrono::duration<double>(duration).count();
        self.animator.alphaValue = opacity;
      }
      completionHandler:^{
        if ([weakSelf endFade:number] && completion) completion();
      }];
}

/// Returns whether that fade was the present one. AppKit also reports the end of fades that were
/// replaced.
- (BOOL)endFade:(NSUInteger)number {
  if (!_isFading || number != _fadeNumber) return NO;
  _isFading = NO;
  self.alphaValue = _opacity;
  return YES;
}

- (void)showInFront {
  // An accessory is hardly ever active, and orderFront: leaves the windows of inactive programs
  // behind those of the active one.
  [self orderFrontRegardless];
  [self shapeDidChange];
}

#pragma mark The shadow

- (void)shapeDidChange {
  [self invalidateShadow];
  // The window server draws the shadow from what it has now, and receives the layers' new contents
  // at the end of this turn of the run loop.
  [self forgetShadow];
  [self performSelector:@selector(invalidateShadow)
             withObject:nil
             afterDelay:0
                inModes:@[ NSRunLoopCommonModes ]];
}

- (void)forgetShadow {
  [NSObject cancelPreviousPerformRequestsWithTarget:self
                                           selector:@selector(invalidateShadow)
                                             object:nil];
}

- (void)dismiss {
  [self forgetShadow];
  [self orderOut:nil];
  if (_isFading) self.opacity = 0;
  [self close];
}

@end
