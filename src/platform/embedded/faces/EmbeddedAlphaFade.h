#pragma once

#include "platform/MainQueue.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {

/// The alpha value of a window on the embedded desktop, with its linear animation on the embedded
/// main queue's clock.
class EmbeddedAlphaFade {
 public:
  [[nodiscard]] double value() const {
    const Duration passed = now() - begin_;
    if (passed >= duration_) return to_;
    return from_ + (to_ - from_) * static_cast<double>(passed.count()) /
                       static_cast<double>(duration_.count());
  }
  [[nodiscard]] double finalValue() const { return to_; }
  [[nodiscard]] bool isRunning() const { return now() < end(); }
  /// On the queue's clock.
  [[nodiscard]] Duration end() const { return begin_ + duration_; }

  void set(double value) { animate(value, Duration::zero()); }
  void animate(double value, Duration duration) {
    from_ = this->value();
    to_ = value;
    begin_ = now();
    duration_ = duration;
  }

 private:
  static Duration now() { return EmbeddedMainQueue::shared().now(); }

  double from_ = 1;
  double to_ = 1;
  Duration begin_{};
  Duration duration_{};
};

}  // namespace vembrix
