#import "platform/SystemLog.h"

#include <os/log.h>

#include <cstdio>

namespace vembrix {
namespace {

/// Owns nothing: the log copies its lines.
class UnifiedLog : public SystemLog {
 public:
  void write(std::string_view line) override {
    // Not NSLog: since macOS 26 it marks its text private, and the log tool shows "<private>"
    // instead. Lines at the default level are stored.
    os_log(OS_LOG_DEFAULT, "%{public}.*s", static_cast<int>(line.size()), line.data());
    // For starts from a terminal; programs started by the Finder have no visible standard error.
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
  }
};

}  // namespace

SystemLog& SystemLog::shared() {
  static auto& log = *new UnifiedLog;
  return log;
}

}  // namespace vembrix
