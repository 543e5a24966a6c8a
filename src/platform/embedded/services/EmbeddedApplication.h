#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "platform/Application.h"

namespace vembrix {

/// An application without windows of its own, on the embedded main queue's
/// clock. Its appearance is the embedded desktop's.
class EmbeddedApplication : public Application {
 public:
  /// The application behind Application::shared().
  static EmbeddedApplication& shared();

  void setActivationPolicy(ActivationPolicy policy) override { policy_ = policy; }
  void setDelegate(ApplicationDelegate* delegate) override { delegate_ = delegate; }
  /// Launches, then runs the main queue's blocks as they become due, until terminate() or until
  /// none is left.
  int run() override;
  void terminate() override { terminated_ = true; }
  void activate() override { activationCount_ += 1; }
  Token beginActivity(std::uint64_t options, std::string_view reason) override;
  std::optional<Appearance> effectiveAppearance() const override;
  bool reducesMotion() const override { return reducesMotion_; }

  ActivationPolicy activationPolicy() const { return policy_; }
  ApplicationDelegate* delegate() const { return delegate_; }
  /// Acts like a user who starts the program again while it runs.
  void reopen() {
    if (delegate_) delegate_->applicationDidReopen();
  }
  /// Sets the user's preference; initially false.
  void setReducesMotion(bool reducesMotion) { reducesMotion_ = reducesMotion; }
  /// Whether terminate() was called since run().
  bool isTerminated() const { return terminated_; }
  int activationCount() const { return activationCount_; }
  /// A running activity: options and reason.
  using Activity = std::pair<std::uint64_t, std::string>;
  const std::map<int, Activity>& activities() const { return activities_; }

 private:
  ActivationPolicy policy_ = ActivationPolicy::Regular;
  ApplicationDelegate* delegate_ = nullptr;
  bool terminated_ = false;
  bool reducesMotion_ = false;
  int activationCount_ = 0;
  std::map<int, Activity> activities_;
  int activityCount_ = 0;
};

}  // namespace vembrix
