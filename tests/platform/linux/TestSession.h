#pragma once

#include <functional>
#include <string>

#include "platform/MainQueue.h"
#include "platform/linux/TemporaryDirectory.h"

namespace vembrix {

/// Takes the test out of the session of whoever runs it: no display, no message
/// bus, settings and fonts of its own. To be made before anything of the platform
/// is touched; lasts until the process ends. The environment variable VEMBRIX_FONTS
/// names another set of tests/fonts, VEMBRIX_SCALE the pixels of a point.
class TestSession {
 public:
  TestSession();

  /// The name of the set of fonts.
  static std::string fonts();

  /// Runs on the desktop in the process, with windows that nobody sees.
  static void useNoScreen();
  static void setVariable(const char* name, const std::string& value);

  [[nodiscard]] const std::filesystem::path& settings() const { return settings_.path(); }

 private:
  TemporaryDirectory settings_;
};

/// Lets the event loop run for that long.
void runFor(Duration duration);

/// Lets the event loop run until the condition holds, at most for as long as a busy
/// machine may need. Whether it came to hold.
bool runUntil(const std::function<bool()>& condition, Duration limit = std::chrono::seconds(30));

}  // namespace vembrix
