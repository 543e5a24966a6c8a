#import "platform/WindowServer.h"

#include <string>

#include "platform/SystemLog.h"
#import "platform/macos/CFOwned.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/PrivateWindowServer.h"

namespace vembrix {
namespace {

bool isPresent(bool present, const char* name) {
  if (!present) logLine(std::string("WindowServer: this system has no ") + name);
  return present;
}

/// The private calls, as far as the system has them. Owns the last answer about
/// the Spaces: as long as the desktop stays the same it is converted once.
class SystemWindowServer : public WindowServer {
 public:
  ConnectionID CGSMainConnectionID() override {
    return hasMainConnectionID_ ? ::CGSMainConnectionID() : 0;
  }

  PropertyList CGSCopyManagedDisplaySpaces(ConnectionID connection) override {
    if (!hasCopyManagedDisplaySpaces_) return {};
    @autoreleasepool {
      auto answer = CFOwned<CFArrayRef>::adopt(::CGSCopyManagedDisplaySpaces(connection));
      if (!answer) return {};
      if (!answer_ || !CFEqual(answer.get(), answer_.get())) {
        spaces_ = propertyListFrom((__bridge id)answer.get());
        answer_ = std::move(answer);
      }
      return spaces_;
    }
  }

  SpaceID CGSGetActiveSpace(ConnectionID connection) override {
    return hasGetActiveSpace_ ? ::CGSGetActiveSpace(connection) : 0;
  }

  void CGSManagedDisplaySetCurrentSpace(ConnectionID connection, std::string_view display,
                                        SpaceID space) override {
    if (!hasManagedDisplaySetCurrentSpace_) return;
    @autoreleasepool {
      ::CGSManagedDisplaySetCurrentSpace(connection, (__bridge CFStringRef)nativeString(display),
                                         space);
    }
  }

 private:
  // Asked once, so that what is missing is logged once.
  const bool hasMainConnectionID_ =
      isPresent(&::CGSMainConnectionID != nullptr, "CGSMainConnectionID");
  const bool hasCopyManagedDisplaySpaces_ =
      isPresent(&::CGSCopyManagedDisplaySpaces != nullptr, "CGSCopyManagedDisplaySpaces");
  const bool hasGetActiveSpace_ = isPresent(&::CGSGetActiveSpace != nullptr, "CGSGetActiveSpace");
  const bool hasManagedDisplaySetCurrentSpace_ =
      isPresent(&::CGSManagedDisplaySetCurrentSpace != nullptr, "CGSManagedDisplaySetCurrentSpace");

  CFOwned<CFArrayRef> answer_;
  /// What the answer says.
  PropertyList spaces_;
};

}  // namespace

WindowServer& WindowServer::shared() {
  static auto& server = *new SystemWindowServer;
  return server;
}

}  // namespace vembrix
