#import "platform/Accessibility.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#import "platform/macos/support/Arc.h"

namespace vembrix {
namespace {

/// Owns nothing: asks the system each time.
class SystemAccessibility : public Accessibility {
 public:
  bool isProcessTrusted(Prompt prompt) override {
    if (prompt == Prompt::No) return AXIsProcessTrusted();
    @autoreleasepool {
      NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
      return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }
  }
};

}  // namespace

Accessibility& Accessibility::shared() {
  static auto& accessibility = *new SystemAccessibility;
  return accessibility;
}

}  // namespace vembrix
