#pragma once

#include <string_view>

namespace vembrix {

/// The system's log. Any thread; reports no errors.
class SystemLog {
 public:
  static SystemLog& shared();

  virtual ~SystemLog() = default;

  /// Writes one line, as it is (UTF-8, no line feed).
  virtual void write(std::string_view line) = 0;
};

/// Writes "[Vembrix] " and the message as one line of the system's log.
void logLine(std::string_view message);

/// Logs the message and aborts the process: for a violated invariant of the program.
[[noreturn]] void programmingError(std::string_view message);

}  // namespace vembrix
