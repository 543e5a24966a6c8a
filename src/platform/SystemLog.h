#pragma once

#include <string_view>

namespace vembrix {

/// The system's log. Any thread; never fails towards the caller.
class SystemLog {
 public:
  static SystemLog& shared();

  virtual ~SystemLog() = default;

  /// Writes one line, as it is (UTF-8, no line feed).
  virtual void write(std::string_view line) = 0;
};

/// Writes "[Vembrix] " and the message as one line of the system's log.
void logLine(std::string_view message);

/// A broken promise inside the program: logs the message and ends the process
/// abnormally, so that the cause is on record.
[[noreturn]] void programmingError(std::string_view message);

}  // namespace vembrix
