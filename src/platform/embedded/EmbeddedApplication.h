#pragma once

#include <vector>

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
  /// Launches, then runs the main queue from due block to due block until
  /// terminate(), or until none is left, since then nothing can happen any more.
  int run() override;
  void terminate() override { terminated_ = true; }
  void activate() override { activationCount_ += 1; }
  std::optional<Appearance> effectiveAppearance() const override;

  ActivationPolicy activationPolicy() const { return policy_; }
  ApplicationDelegate* delegate() const { return delegate_; }
  /// Whether it was told to end since it began to run.
  bool isTerminated() const { return terminated_; }
  int activationCount() const { return activationCount_; }

 private:
  ActivationPolicy policy_ = ActivationPolicy::Regular;
  ApplicationDelegate* delegate_ = nullptr;
  bool terminated_ = false;
  int activationCount_ = 0;
};

}  // namespace vembrix
