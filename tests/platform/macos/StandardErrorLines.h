#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vembrix {

/// What the process writes to its standard error by stdio, read on its way there. What
/// frameworks write past stdio is not in it. Any thread.
class StandardErrorLines {
 public:
  /// Reads from its first use on.
  static StandardErrorLines& shared();

  StandardErrorLines(const StandardErrorLines&) = delete;
  StandardErrorLines& operator=(const StandardErrorLines&) = delete;

  /// The whole lines so far, without line feeds, oldest first.
  [[nodiscard]] std::vector<std::string> lines() const;

 private:
  StandardErrorLines();
  ~StandardErrorLines() = default;

  /// As stdio calls it.
  static int write(void* lines, const char* bytes, int count);
  void take(std::string_view bytes);

  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
  std::string begun_;
};

}  // namespace vembrix
