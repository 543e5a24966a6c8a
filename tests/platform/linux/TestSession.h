#pragma once

#include <functional>
#include <string>

#include "platform/MainQueue.h"
#include "platform/linux/TemporaryDirectory.h"

namespace vembrix {

/// Takes the test out of the session of whoever runs it: no display, no message
/// bus, settings of its own. To be made before anything of the platform is
/// touched; lasts until the process ends.
class TestSession {
 public:
  TestSession();

  /// Runs on the desktop in the process, with windows that nobody sees.
  static void useNoScreen();
  static void setVariable(const char* name, const std::string& value);

  [[nodiscard]] const std::filesystem::path& settings() const { return settings_.path(); }

 private:
  TemporaryDirectory settings_;
};

/// Lets the event loop run for that long.
void runFor(Duration duration);

/// Lets the event loop run until the condition holds, a few seconds at most.
/// Whether it came to hold.
bool runUntil(const std::function<bool()>& condition, Duration limit = std::chrono::seconds(10));

}  // namespace vembrix
