#import "platform/macos/SystemVersion.h"

#include <sys/utsname.h>

#include <cstdlib>

namespace vembrix {
namespace {

/// Programs that are built with an older SDK are told an older version of the system.
/// The kernel's version is the true one for everybody: 23 on macOS 14, 25 on macOS 26,
/// 27 on macOS 27, whose first previews had 26.
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
