#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/Color.h"
#include "platform/Token.h"

namespace vembrix {

/// Told about the application's life. Main thread.
class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;

  /// Once, when the event loop has started.
  virtual void applicationDidFinishLaunching() = 0;

  /// The user has started the program again while it runs. After launching has
  /// finished, any number of times.
  virtual void applicationDidReopen() = 0;
};

/// The application as the system sees it. Main thread.
class Application {
 public:
  enum class ActivationPolicy {
    Regular = 0,
    /// No Dock icon, no main menu; windows and status items only.
    Accessory = 1,
  };

  /// The shared application, made on first use. Lives as long as the process.
  static Application& shared();

  virtual ~Application() = default;

  virtual void setActivationPolicy(ActivationPolicy policy) = 0;

  /// Held weakly: the delegate must outlive run().
  virtual void setDelegate(ApplicationDelegate* delegate) = 0;

  /// Runs the event loop until terminate(); the process's exit status. Systems
  /// that end the process themselves do so with status 0 and do not return.
  virtual int run() = 0;

  /// Ends the event loop after the current event.
  virtual void terminate() = 0;

  /// Brings the program's windows before those of other programs, and the keyboard
  /// to the front one of them. Without windows it changes nothing to be seen.
  virtual void activate() = 0;

  /// What the user has asked for: timers keep their pace while the program is idle
  /// in the background; the machine may still go to sleep by itself.
  static constexpr std::uint64_t userInitiatedAllowingIdleSystemSleep = 0xEFFFFF;

  /// Begins an activity of the process that lasts until the token is dropped. The
  /// reason is for who looks at what the system does. An empty token where the system
  /// slows no program down.
  [[nodiscard]] virtual Token beginActivity(std::uint64_t options, std::string_view reason) = 0;

  /// The better match of light and dark for what the application looks like
  /// now; nothing when the system does not tell.
  [[nodiscard]] virtual std::optional<Appearance> effectiveAppearance() const = 0;

  /// Whether the user wants less motion on the screen, now. False when the system does
  /// not tell.
  [[nodiscard]] virtual bool reducesMotion() const = 0;
};

}  // namespace vembrix
