#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/Application.h"

class QApplication;

namespace vembrix {

class ForgedEventFilter;
class SingleInstance;
class SleepWatcher;
class AppearanceObserver;
class TerminationSignals;

/// The application on Qt's event loop, with its sources of events: the X11 desktop, the session's
/// appearance, sleep, and termination signals.
class LinuxApplication : public Application {
 public:
  /// Returns the object behind Application::shared().
  static LinuxApplication& shared();

  LinuxApplication();
  ~LinuxApplication() override;
  LinuxApplication(const LinuxApplication&) = delete;
  LinuxApplication& operator=(const LinuxApplication&) = delete;

  void setActivationPolicy(ActivationPolicy policy) override { policy_ = policy; }
  void setDelegate(ApplicationDelegate* delegate) override;
  /// Returns 0 at once if Vembrix already runs on the display. Ends the process if the session has
  /// no desktops to show.
  int run() override;
  void terminate() override;
  void activate() override;
  /// Returns an empty token: the system slows no program down.
  Token beginActivity(std::uint64_t /*options*/, std::string_view /*reason*/) override {
    return {};
  }
  std::optional<Appearance> effectiveAppearance() const override;
  bool reducesMotion() const override;

  /// Returns accessory: the program's windows stay out of task lists.
  [[nodiscard]] ActivationPolicy activationPolicy() const { return policy_; }

 private:
  class QtObject;

  ActivationPolicy policy_ = ActivationPolicy::Regular;
  std::unique_ptr<QtObject> qt_;
  std::unique_ptr<SingleInstance> instance_;
  std::unique_ptr<ForgedEventFilter> forgedEventFilter_;
  std::unique_ptr<AppearanceObserver> appearance_;
  std::unique_ptr<SleepWatcher> sleepWatcher_;
  std::unique_ptr<TerminationSignals> terminationSignals_;
};

}  // namespace vembrix
