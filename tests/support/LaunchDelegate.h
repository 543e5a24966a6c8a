#pragma once

#include <functional>
#include <utility>

#include "platform/Application.h"

namespace vembrix {

/// Calls the function when launching has finished.
class LaunchDelegate : public ApplicationDelegate {
 public:
  explicit LaunchDelegate(std::function<void()> launched) : launched_(std::move(launched)) {}
  void applicationDidFinishLaunching() override { launched_(); }
  void applicationDidReopen() override {}

 private:
  std::function<void()> launched_;
};

}  // namespace vembrix
