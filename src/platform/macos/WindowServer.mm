#import "platform/WindowServer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>

#include "platform/SystemLog.h"
#import "platform/macos/support/CFOwned.h"
#import "platform/macos/support/Conversions.h"
#import "platform/macos/windowserver/PrivateWindowServer.h"
#import "platform/macos/windowserver/WindowList.h"

namespace vembrix {
namespace {

bool isPresent(bool present, const char* name) {
  if (!present) logLine(std::string("WindowServer: this system has no ") + name);
  return present;
}

static_assert(WindowServer::onScreenOnly == kCGWindowListOptionOnScreenOnly);
static_assert(WindowServer::excludeDesktopElements == kCGWindowListExcludeDesktopElements);

/// Returns the native form of a list of windows or Spaces. Small numbers are stored without an
/// allocation.
template <typename Number>
CFOwned<CFArrayRef> nativeNumbers(std::span<const Number> numbers) {
  CFMutableArrayRef array = CFArrayCreateMutable(
      kCFAllocatorDefault, static_cast<CFIndex>(numbers.size()), &kCFTypeArrayCallBacks);
  for (const Number number : numbers) {
    const auto value = static_cast<std::int64_t>(number);
    const auto native = CFOwned<CFNumberRef>::adopt(
        CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &value));
    CFArrayAppendValue(array, native.get());
  }
  return CFOwned<CFArrayRef>::adopt(array);
}

/// The answers about windows as values. Each label's window is queried every few seconds and is
/// nearly always in one Space, its own: such answers are created once for each Space. Owns them;
/// there are few Spaces.
class SpacesOfWindows {
 public:
  PropertyList read(CFArrayRef spaces) {
    const std::optional<std::int64_t> space = onlyNumber(spaces);
    if (!space) return propertyListFrom((__bridge id)spaces);
    PropertyList& value = single_[*space];
    if (value.isNull()) value = PropertyList::Array{*space};
    return value;
  }

 private:
  /// Returns the number if the array consists of one whole number; else empty.
  static std::optional<std::int64_t> onlyNumber(CFArrayRef array) {
    if (CFArrayGetCount(array) != 1) return std::nullopt;
    CFTypeRef element = CFArrayGetValueAtIndex(array, 0);
    if (CFGetTypeID(element) != CFNumberGetTypeID()) return std::nullopt;
    const auto number = static_cast<CFNumberRef>(element);
    std::int64_t value = 0;
    if (CFNumberIsFloatType(number) || !CFNumberGetValue(number, kCFNumberSInt64Type, &value)) {
      return std::nullopt;
    }
    return value;
  }

  std::unordered_map<std::int64_t, PropertyList> single_;
};

/// The private calls, if the system has them, and the window list. Owns the last answer about the
/// Spaces: it is converted once while the desktop stays the same.
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

  // Without one of the calls, windows must stay where they are: one that cannot be added to a Space
  // must not be removed from its last, and one that cannot be removed would be in two.
  bool canPlaceWindows() const override {
    return hasMainConnectionID_ && hasAddWindowsToSpaces_ && hasRemoveWindowsFromSpaces_;
  }

  void CGSAddWindowsToSpaces(ConnectionID connection, std::span<const WindowNumber> windows,
                             std::span<const SpaceID> spaces) override {
    if (!canPlaceWindows()) return;
    @autoreleasepool {
      ::CGSAddWindowsToSpaces(connection, nativeNumbers(windows).get(),
                              nativeNumbers(spaces).get());
    }
  }

  void CGSRemoveWindowsFromSpaces(ConnectionID connection, std::span<const WindowNumber> windows,
                                  std::span<const SpaceID> spaces) override {
    if (!canPlaceWindows()) return;
    @autoreleasepool {
      ::CGSRemoveWindowsFromSpaces(connection, nativeNumbers(windows).get(),
                                   nativeNumbers(spaces).get());
    }
  }

  PropertyList CGSCopySpacesForWindows(ConnectionID connection, std::uint32_t mask,
                                       std::span<const WindowNumber> windows) override {
    if (!hasCopySpacesForWindows_) return {};
    @autoreleasepool {
      const auto answer = CFOwned<CFArrayRef>::adopt(
          ::CGSCopySpacesForWindows(connection, mask, nativeNumbers(windows).get()));
      if (!answer || CFGetTypeID(answer.get()) != CFArrayGetTypeID()) return {};
      return spacesOfWindows_.read(answer.get());
    }
  }

  PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) override {
    @autoreleasepool {
      const auto answer =
          CFOwned<CFArrayRef>::adopt(::CGWindowListCopyWindowInfo(options, kCGNullWindowID));
      if (!answer) return {};
      return windows_.read((__bridge NSArray*)answer.get());
    }
  }

 private:
  // Checked once, so that a missing call is logged once.
  const bool hasMainConnectionID_ =
      isPresent(&::CGSMainConnectionID != nullptr, "CGSMainConnectionID");
  const bool hasCopyManagedDisplaySpaces_ =
      isPresent(&::CGSCopyManagedDisplaySpaces != nullptr, "CGSCopyManagedDisplaySpaces");
  const bool hasGetActiveSpace_ = isPresent(&::CGSGetActiveSpace != nullptr, "CGSGetActiveSpace");
  const bool hasManagedDisplaySetCurrentSpace_ =
      isPresent(&::CGSManagedDisplaySetCurrentSpace != nullptr, "CGSManagedDisplaySetCurrentSpace");
  const bool hasAddWindowsToSpaces_ =
      isPresent(&::CGSAddWindowsToSpaces != nullptr, "CGSAddWindowsToSpaces");
  const bool hasRemoveWindowsFromSpaces_ =
      isPresent(&::CGSRemoveWindowsFromSpaces != nullptr, "CGSRemoveWindowsFromSpaces");
  const bool hasCopySpacesForWindows_ =
      isPresent(&::CGSCopySpacesForWindows != nullptr, "CGSCopySpacesForWindows");

  CFOwned<CFArrayRef> answer_;
  /// The answer's value.
  PropertyList spaces_;

  SpacesOfWindows spacesOfWindows_;
  WindowList windows_;
};

}  // namespace

WindowServer& WindowServer::shared() {
  static auto& server = *new SystemWindowServer;
  return server;
}

}  // namespace vembrix
