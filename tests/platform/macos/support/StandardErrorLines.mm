#include "platform/macos/support/StandardErrorLines.h"

#include <stdio.h>
#include <unistd.h>

#include <utility>

#import "platform/macos/support/Arc.h"

namespace vembrix {

StandardErrorLines& StandardErrorLines::shared() {
  // Never destroyed, because other code writes until the very end.
  static auto& lines = *new StandardErrorLines;
  return lines;
}

StandardErrorLines::StandardErrorLines() {
  FILE* stream = funopen(this, nullptr, &StandardErrorLines::write, nullptr, nullptr);
  if (!stream) return;
  setvbuf(stream, nullptr, _IONBF, 0);
  stderr = stream;
}

int StandardErrorLines::write(void* lines, const char* bytes, int count) {
  static_cast<StandardErrorLines*>(lines)->take({bytes, static_cast<std::size_t>(count)});
  return static_cast<int>(::write(STDERR_FILENO, bytes, static_cast<std::size_t>(count)));
}

void StandardErrorLines::take(std::string_view bytes) {
  const std::lock_guard lock(mutex_);
  for (const char byte : bytes) {
    if (byte == '\n') {
      lines_.push_back(std::exchange(begun_, {}));
    } else {
      begun_ += byte;
    }
  }
}

std::vector<std::string> StandardErrorLines::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

}  // namespace vembrix
