#pragma once

#include <unistd.h>

#include <utility>

namespace vembrix {

/// Owns a file descriptor and closes it. Any thread.
class Descriptor {
 public:
  /// Takes ownership; a negative number is no descriptor.
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int number() const { return number_; }
  /// Closes it now. Further calls have no effect.
  void close() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
  }

 private:
  int number_;
};

}  // namespace vembrix
