#import "platform/Application.h"

#import <AppKit/AppKit.h>

#import "platform/macos/support/Conversions.h"

/// Reports the application's events to the product. Owned by SystemApplication, which sets and
/// clears the target; the target belongs to the product.
@interface VembrixApplicationDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic) vembrix::ApplicationDelegate* target;
@end

@implementation VembrixApplicationDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  if (self.target) self.target->applicationDidFinishLaunching();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)application
                    hasVisibleWindows:(BOOL)hasVisibleWindows {
  // An open menu runs a nested loop. So the dropdown is not opened inside the event, whose sender
  // waits for the answer.
  __weak VembrixApplicationDelegate* weakSelf = self;
  [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                  block:^{
                                    VembrixApplicationDelegate* me = weakSelf;
                                    if (me.target) me.target->applicationDidReopen();
                                  }];
  // There is no window that AppKit should bring back.
  return NO;
}

// No state is ever saved. Without this method AppKit logs a warning.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
  return YES;
}

@end

namespace vembrix {
namespace {

static_assert(Application::userInitiatedAllowingIdleSystemSleep ==
              NSActivityUserInitiatedAllowingIdleSystemSleep);

/// Owns the native delegate, which NSApplication holds weakly. The application
/// object itself belongs to AppKit and lives as long as the process.
class SystemApplication : public Application {
 public:
  void setActivationPolicy(ActivationPolicy policy) override {
    [app_ setActivationPolicy:policy == ActivationPolicy::Accessory
                                  ? NSApplicationActivationPolicyAccessory
                                  : NSApplicationActivationPolicyRegular];
  }

  void setDelegate(ApplicationDelegate* delegate) override {
    delegate_.target = delegate;
    app_.delegate = delegate ? delegate_ : nil;
  }

  int run() override {
    [app_ run];
    return 0;
  }

  void terminate() override {
    // terminate: ends the process, so the caller would never return. Performed by the run loop, it
    // also works before run().
    [app_ performSelector:@selector(terminate:)
               withObject:nil
               afterDelay:0
                  inModes:@[ NSRunLoopCommonModes ]];
  }

  void activate() override {
    // Since macOS 14 its successor is only a request, which is often refused to an accessory: the
    // window would stay behind those of the program in front.
    [app_ activateIgnoringOtherApps:YES];
  }

  Token beginActivity(std::uint64_t options, std::string_view reason) override {
    @autoreleasepool {
      id<NSObject> activity =
          [NSProcessInfo.processInfo beginActivityWithOptions:options reason:nativeString(reason)];
      return Token([activity] { [NSProcessInfo.processInfo endActivity:activity]; });
    }
  }

  std::optional<Appearance> effectiveAppearance() const override {
    return appearanceFrom(app_.effectiveAppearance);
  }

  bool reducesMotion() const override {
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
  }

 private:
  NSApplication* const app_ = [NSApplication sharedApplication];
  VembrixApplicationDelegate* const delegate_ = [[VembrixApplicationDelegate alloc] init];
};

}  // namespace

Application& Application::shared() {
  static auto& application = []() -> SystemApplication& {
    // AppKit has no autorelease pool yet.
    @autoreleasepool {
      return *new SystemApplication;
    }
  }();
  return application;
}

}  // namespace vembrix
