#import "platform/macos/TrustObserver.h"

#include <memory>
#include <utility>

#include "platform/MainQueue.h"

namespace vembrix {
namespace {

/// Posted when the list of programs with the permission for Accessibility changes. No header
/// declares it; systems without it never post it, and the handlers are not called.
constexpr std::string_view kTrustDidChange = "com.apple.accessibility.api";

/// The notification comes before the change takes effect.
constexpr std::chrono::seconds kDelay{1};

}  // namespace

Observation observeTrust(std::function<void()> handler) {
  // Both are owned by the observation. Several changes in a row count as one.
  auto pending = std::make_shared<WorkItem>();
  const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
  return NotificationCenter::distributed().addObserver(
      kTrustDidChange, [pending = std::move(pending), shared] {
        *pending = MainQueue::main().schedule(kDelay, [shared] { (*shared)(); });
      });
}

}  // namespace vembrix
