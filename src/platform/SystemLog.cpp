#include "platform/SystemLog.h"

#include <cstdlib>
#include <string>

namespace vembrix {

void logLine(std::string_view message) {
  constexpr std::string_view kPrefix = "[Vembrix] ";
  std::string line;
  line.reserve(kPrefix.size() + message.size());
  line.append(kPrefix).append(message);
  SystemLog::shared().write(line);
}

void programmingError(std::string_view message) {
  logLine(message);
  std::abort();
}

}  // namespace vembrix
