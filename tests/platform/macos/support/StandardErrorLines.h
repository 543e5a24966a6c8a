#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vembrix {

/// Captures what the process writes to its standard error through stdio, without output that
/// frameworks write directly. Any thread.
class StandardErrorLines {
 public:
  /// Reads from its first use on.
  static StandardErrorLines& shared();

  StandardErrorLines(const StandardErrorLines&) = delete;
  StandardErrorLines& operator=(const StandardErrorLines&) = delete;

  /// Returns the complete lines so far, without line feeds, oldest first.
  [[nodiscard]] std::vector<std::string> lines() const;

 private:
  StandardErrorLines();
  ~StandardErrorLines() = default;

  /// Called by stdio.
  static int write(void* lines, const char* bytes, int count);
  void take(std::string_view bytes);

  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
  std::string begun_;
};

}  // namespace vembrix
