#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/Color.h"
#include "platform/Token.h"

namespace vembrix {

/// Receives the application's life-cycle events. Main thread.
class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;

  /// Called once, when the event loop has started.
  virtual void applicationDidFinishLaunching() = 0;

  /// Called each time the user starts the program again while it runs, after launching has
  /// finished.
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

  /// Runs the event loop until terminate() and returns the process's exit status. Systems that end
  /// the process themselves do so with status 0 and do not return.
  virtual int run() = 0;

  /// Ends the event loop after the current event.
  virtual void terminate() = 0;

  /// Brings the program's windows in front of those of other programs and gives the keyboard to the
  /// frontmost. Has no visible effect without windows.
  virtual void activate() = 0;

  /// An activity that the user has asked for: timers keep their pace while the program is idle in
  /// the background; the machine may still go to sleep by itself.
  static constexpr std::uint64_t userInitiatedAllowingIdleSystemSleep = 0xEFFFFF;

  /// Begins an activity of the process that lasts until the token is dropped. The system's
  /// diagnostic tools show `reason`. The token is empty where the system slows no program down.
  [[nodiscard]] virtual Token beginActivity(std::uint64_t options, std::string_view reason) = 0;

  /// Returns which of light and dark the application looks like now; empty when unknown.
  [[nodiscard]] virtual std::optional<Appearance> effectiveAppearance() const = 0;

  /// Returns whether the user wants less motion on the screen, as of now; false when unknown.
  [[nodiscard]] virtual bool reducesMotion() const = 0;
};

/// Returns the application's present appearance; light when unknown. Main thread.
inline Appearance systemAppearance() {
  return orLight(Application::shared().effectiveAppearance());
}

}  // namespace vembrix
