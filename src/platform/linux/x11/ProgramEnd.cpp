#include "platform/linux/x11/ProgramEnd.h"

#include <unistd.h>

#include <atomic>
#include <cstdlib>

#include "platform/SystemLog.h"
#include "platform/linux/defaults/LinuxUserDefaults.h"

namespace vembrix {

void endProgram(std::string_view message) {
  // One failure often leads to others: the first is the cause.
  static std::atomic_flag ending;
  if (!ending.test_and_set()) {
    logLine(message);
    LinuxUserDefaults::shared().finish();
    _exit(EXIT_FAILURE);
  }
  for (;;) pause();
}

}  // namespace vembrix
