#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <functional>

#include "platform/MainQueue.h"

namespace vembrix {

/// The alpha value of a window and its animation, which eases in and out and ends exactly at the
/// new value. A gradual one takes a step per frame of the screen, another only one right after the
/// beginning. At rest no timer runs. Main thread; needs a Qt application.
class AlphaFade : public QObject {
 public:
  /// `apply` gets each new value.
  explicit AlphaFade(std::function<void(double)> apply);

  /// The present value, also during an animation.
  [[nodiscard]] double value() const;
  [[nodiscard]] bool isRunning() const { return timer_.isActive(); }

  /// Sets whether animations are gradual; initially not.
  void setGradual(bool gradual);

  /// Sets the value and ends an animation without calling its `ended`.
  void set(double value);
  /// Replaces a running animation without calling its `ended`. `ended` is called when the value is
  /// reached: within this call where the duration or the difference is zero.
  void animate(double value, Duration duration, std::function<void()> ended = nullptr);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void apply(double value);
  void finish();
  void waitForStep();

  std::function<void(double)> apply_;
  std::function<void()> ended_;
  bool isGradual_ = false;
  QBasicTimer timer_;
  QElapsedTimer clock_;
  Duration duration_{};
  double from_ = 1;
  double to_ = 1;
  double applied_ = 1;
};

}  // namespace vembrix
