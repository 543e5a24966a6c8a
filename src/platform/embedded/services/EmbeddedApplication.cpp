#include "platform/embedded/services/EmbeddedApplication.h"

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {

EmbeddedApplication& EmbeddedApplication::shared() {
  static EmbeddedApplication application;
  return application;
}

int EmbeddedApplication::run() {
  terminated_ = false;
  if (delegate_) delegate_->applicationDidFinishLaunching();
  EmbeddedMainQueue::shared().runUntilIdle([this] { return terminated_; });
  return 0;
}

Token EmbeddedApplication::beginActivity(std::uint64_t options, std::string_view reason) {
  const int id = ++activityCount_;
  activities_.emplace(id, Activity(options, reason));
  return Token([this, id] { activities_.erase(id); });
}

std::optional<Appearance> EmbeddedApplication::effectiveAppearance() const {
  return EmbeddedDesktop::shared().appearance();
}

}  // namespace vembrix
