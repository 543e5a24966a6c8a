#import "platform/Workspace.h"

#import <AppKit/AppKit.h>

#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Owns nothing: the workspace is AppKit's and lives as long as the process.
class SystemWorkspace : public Workspace {
 public:
  void openURL(std::string_view url) override {
    @autoreleasepool {
      NSURL* address = [NSURL URLWithString:nativeString(url)];
      if (!address) return;
      // The call with a configuration does not wait for the other program.
      [NSWorkspace.sharedWorkspace openURL:address
                             configuration:[NSWorkspaceOpenConfiguration configuration]
                         completionHandler:nil];
    }
  }
};

}  // namespace

Workspace& Workspace::shared() {
  static auto& workspace = *new SystemWorkspace;
  return workspace;
}

}  // namespace vembrix
