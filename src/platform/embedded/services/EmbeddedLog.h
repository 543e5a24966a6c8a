#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "platform/SystemLog.h"

namespace vembrix {

/// A log that keeps its lines in memory and repeats them on standard error for the output of a
/// failing test.
class EmbeddedLog : public SystemLog {
 public:
  /// The log behind SystemLog::shared().
  static EmbeddedLog& shared();

  void write(std::string_view line) override;

  /// All lines since the start, oldest first.
  std::vector<std::string> lines() const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace vembrix
