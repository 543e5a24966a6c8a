#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <chrono>
#include <functional>
#include <span>

#include "platform/MainQueue.h"

namespace vembrix {

/// The alpha value of a window and its animation, which eases in and out and ends exactly at the
/// new value. A gradual animation takes a step per frame of the screen, by a timer or by a player
/// that takes the steps by itself; any other animation takes a single step, soon after its start,
/// and only if it starts at zero. At rest no timer runs. Main thread; needs a Qt application.
class AlphaFade : public QObject {
 public:
  struct Player {
    /// Sets each of the values in turn, the first one an interval from now. Returns false if it
    /// cannot.
    std::function<bool(std::chrono::milliseconds interval, std::span<const double>)> play;
    /// Stops playing.
    std::function<void()> stop;
  };

  /// `apply` receives each new value that the player does not set.
  explicit AlphaFade(std::function<void(double)> apply, Player player = {});

  /// Returns the present value, also during an animation.
  [[nodiscard]] double value() const;
  [[nodiscard]] bool isRunning() const { return timer_.isActive(); }

  /// Sets whether animations are gradual; initially not.
  void setGradual(bool gradual);

  /// Sets the value and ends an animation without calling its `ended`.
  void set(double value);
  /// Replaces a running animation without calling its `ended`. `ended` is called when the value is
  /// reached: within this call if the duration or the difference is zero.
  void animate(double value, Duration duration, std::function<void()> ended = nullptr);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void apply(double value);
  void finish();
  void waitForStep();
  [[nodiscard]] double valueAt(Duration elapsed) const;
  void waitFor(std::chrono::milliseconds time);
  bool play();
  void stopPlaying();

  std::function<void(double)> apply_;
  std::function<void()> ended_;
  Player player_;
  bool isGradual_ = false;
  bool isPlaying_ = false;
  QBasicTimer timer_;
  QElapsedTimer clock_;
  Duration duration_{};
  double from_ = 1;
  double to_ = 1;
  double applied_ = 1;
};

}  // namespace vembrix
