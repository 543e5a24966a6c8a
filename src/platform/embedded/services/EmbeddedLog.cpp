#include "platform/embedded/services/EmbeddedLog.h"

#include <iostream>

namespace vembrix {

EmbeddedLog& EmbeddedLog::shared() {
  static EmbeddedLog log;
  return log;
}

void EmbeddedLog::write(std::string_view line) {
  const std::lock_guard lock(mutex_);
  lines_.emplace_back(line);
  std::cerr << line << '\n';
}

std::vector<std::string> EmbeddedLog::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

}  // namespace vembrix
