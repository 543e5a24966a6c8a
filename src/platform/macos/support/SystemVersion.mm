#import "platform/macos/support/SystemVersion.h"

#include <sys/utsname.h>

#include <cstdlib>

namespace vembrix {
namespace {

/// Returns the kernel's version, which is true for all programs: 23 on macOS 14, 25 on macOS 26, 27
/// on macOS 27, whose first previews had 26. The system's version may be older for programs built
/// with an older SDK.
int darwinVersion() {
  utsname system{};
  return uname(&system) == 0 ? std::atoi(system.release) : 0;
}

int firstDarwinVersion(SystemRelease release) {
  switch (release) {
    case SystemRelease::Sonoma:
      return 23;
    case SystemRelease::GoldenGate:
      return 26;
  }
  return 0;
}

}  // namespace

bool isAtLeast(SystemRelease release) {
  static const int version = darwinVersion();
  return version >= firstDarwinVersion(release);
}

}  // namespace vembrix
