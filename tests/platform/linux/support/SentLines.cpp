#include "platform/linux/support/SentLines.h"

#include <syslog.h>

#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace vembrix {
namespace {

struct Record {
  std::mutex mutex;
  std::vector<std::string> lines;
  std::string identifier;
};

Record& record() {
  // Never destroyed: lines may be logged at the very end.
  static auto& record = *new Record;
  return record;
}

void add(const char* format, std::va_list arguments) {
  std::va_list copy;
  va_copy(copy, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string line(static_cast<std::size_t>(length) + 1, '\0');
  std::vsnprintf(line.data(), line.size(), format, arguments);
  line.pop_back();
  const std::lock_guard lock(record().mutex);
  record().lines.push_back(line);
}

}  // namespace

std::vector<std::string> sentLines() {
  const std::lock_guard lock(record().mutex);
  return record().lines;
}

std::string logIdentifier() {
  const std::lock_guard lock(record().mutex);
  return record().identifier;
}

}  // namespace vembrix

// These replace the C library's functions. Fortified builds call the last one.

extern "C" void openlog(const char* identifier, int /*options*/, int /*facility*/) {
  const std::lock_guard lock(vembrix::record().mutex);
  vembrix::record().identifier = identifier;
}

extern "C" void syslog(int /*priority*/, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  vembrix::add(format, arguments);
  va_end(arguments);
}

// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" void __syslog_chk(int /*priority*/, int /*flag*/, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  vembrix::add(format, arguments);
  va_end(arguments);
}
