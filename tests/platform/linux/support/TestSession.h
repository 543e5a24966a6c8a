#pragma once

#include <functional>
#include <string>

#include "platform/MainQueue.h"
#include "platform/linux/support/TemporaryDirectory.h"

namespace vembrix {

/// Isolates the test from the session that runs it: no display, no message bus, separate settings
/// and fonts. To be created before any use of the platform; lasts until the process ends. The
/// environment variable VEMBRIX_FONTS names another set of tests/fonts, VEMBRIX_SCALE the pixels of
/// a point.
class TestSession {
 public:
  TestSession();

  /// The name of the set of fonts.
  static std::string fonts();

  /// Selects the desktop in the process and offscreen windows.
  static void useNoScreen();
  static void setVariable(const char* name, const std::string& value);

  [[nodiscard]] const std::filesystem::path& settings() const { return settings_.path(); }

 private:
  TemporaryDirectory settings_;
};

/// Lets the event loop run for that long.
void runFor(Duration duration);

/// Lets the event loop run until the condition holds, at most for as long as a busy machine may
/// need. Returns whether it held.
bool runUntil(const std::function<bool()>& condition, Duration limit = std::chrono::seconds(30));

}  // namespace vembrix
