#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <functional>

#include "platform/MainQueue.h"

namespace vembrix {

/// The alpha value of a window, and its way from one value to another: slow at both
/// ends, at its end exactly there. Gradual ones take a step for each picture of the
/// screen, others only one right after the beginning. At rest no timer runs. Main
/// thread; needs a Qt application.
class AlphaFade : public QObject {
 public:
  /// `apply` gets each new value.
  explicit AlphaFade(std::function<void(double)> apply);

  /// What it has come to by now.
  [[nodiscard]] double value() const;
  [[nodiscard]] bool isRunning() const { return timer_.isActive(); }

  /// Whether every step is seen. Not so at first.
  void setGradual(bool gradual);

  /// Ends an animation, whose `ended` is not called.
  void set(double value);
  /// Takes the place of an animation that runs, whose `ended` is not called. `ended`
  /// is called when the value is there: in this call where there is no time or no way
  /// to go.
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
