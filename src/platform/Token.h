#pragma once

#include <functional>
#include <utility>

namespace vembrix {

/// Owns something that lasts until the token is dropped: an observation, a timer, a delayed block.
/// Move-only; ends it once, on destruction, reset() or assignment. Main thread.
class Token {
 public:
  Token() = default;
  /// `end` is called once, possibly after the service that made the token is gone.
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

  /// Whether the token owns something. A one-time block counts even after it has run.
  explicit operator bool() const { return end_ != nullptr; }

  void reset() {
    // Emptied first, because `end` may use this token.
    if (auto end = std::exchange(end_, nullptr)) end();
  }

 private:
  std::function<void()> end_;
};

}  // namespace vembrix
