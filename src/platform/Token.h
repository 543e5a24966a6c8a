#pragma once

#include <functional>
#include <utility>

namespace vembrix {

/// Something that goes on until the token is dropped: an observation, a timer,
/// a delayed block. A value that can be moved but not copied; ends what it
/// stands for once, on destruction, reset() or assignment. Main thread.
class Token {
 public:
  Token() = default;
  /// `end` is called once and may run after the service that made the token.
  explicit Token(std::function<void()> end) : end_(std::move(end)) {}
  ~Token() { reset(); }

  Token(Token&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Token& operator=(Token&& other) noexcept {
    if (this != &other) {
      reset();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  Token(const Token&) = delete;
  Token& operator=(const Token&) = delete;

  /// Whether a token is held; a one-time block that has run is still held.
  explicit operator bool() const { return end_ != nullptr; }

  void reset() {
    // Emptied first: the end may reach back here.
    if (auto end = std::exchange(end_, nullptr)) end();
  }

 private:
  std::function<void()> end_;
};

}  // namespace vembrix
