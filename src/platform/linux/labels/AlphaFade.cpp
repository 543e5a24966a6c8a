#include "platform/linux/labels/AlphaFade.h"

#include <QEasingCurve>
#include <QGuiApplication>
#include <QPointF>
#include <QScreen>
#include <QTimerEvent>
#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace vembrix {
namespace {

using std::chrono::milliseconds;

/// The curve with which AppKit eases in and out.
const QEasingCurve& easing() {
  static const QEasingCurve curve = [] {
    QEasingCurve bezier(QEasingCurve::BezierSpline);
    bezier.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return bezier;
  }();
  return curve;
}

/// Returns the time between two frames of the screen.
milliseconds pictureInterval() {
  constexpr double kUsualRate = 60;
  constexpr double kSlowest = 30;
  constexpr double kFastest = 120;
  const QScreen* screen = QGuiApplication::primaryScreen();
  // Virtual screens report 0.
  const double rate = screen && screen->refreshRate() > 1 ? screen->refreshRate() : kUsualRate;
  return milliseconds(static_cast<int>(1000 / std::clamp(rate, kSlowest, kFastest)));
}

}  // namespace

AlphaFade::AlphaFade(std::function<void(double)> apply, Player player)
    : apply_(std::move(apply)), player_(std::move(player)) {}

double AlphaFade::value() const {
  return isRunning() ? valueAt(Duration(clock_.nsecsElapsed())) : to_;
}

double AlphaFade::valueAt(Duration elapsed) const {
  const double progress =
      static_cast<double>(elapsed.count()) / static_cast<double>(duration_.count());
  return progress < 1 ? from_ + (to_ - from_) * easing().valueForProgress(progress) : to_;
}

void AlphaFade::setGradual(bool gradual) {
  if (std::exchange(isGradual_, gradual) == gradual || !isRunning()) return;
  stopPlaying();
  waitForStep();
}

void AlphaFade::set(double value) {
  timer_.stop();
  stopPlaying();
  ended_ = nullptr;
  to_ = value;
  apply(value);
}

void AlphaFade::animate(double value, Duration duration, std::function<void()> ended) {
  from_ = this->value();
  stopPlaying();
  to_ = value;
  duration_ = duration;
  ended_ = std::move(ended);
  if (duration <= Duration::zero() || from_ == to_) {
    finish();
    return;
  }
  clock_.start();
  // A window that is to appear does so at the first step.
  if (!isGradual_ && from_ == 0) {
    waitFor(pictureInterval());
  } else {
    waitForStep();
  }
}

void AlphaFade::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return;
  const double value = this->value();
  if (Duration(clock_.nsecsElapsed()) >= duration_) {
    finish();
    return;
  }
  if (!isPlaying_) apply(value);
  if (!isGradual_ || isPlaying_) waitForStep();
}

void AlphaFade::waitForStep() {
  if (isGradual_ && !isPlaying_ && !play()) {
    waitFor(pictureInterval());
    return;
  }
  const Duration left = duration_ - Duration(clock_.nsecsElapsed());
  waitFor(std::max(std::chrono::ceil<std::chrono::milliseconds>(left), milliseconds(0)));
}

void AlphaFade::waitFor(milliseconds time) {
  timer_.start(static_cast<int>(time.count()), Qt::PreciseTimer, this);
}

bool AlphaFade::play() {
  if (!player_.play) return false;
  // Longer animations use a timer.
  constexpr std::size_t kMost = 128;
  const milliseconds interval = pictureInterval();
  const Duration begin(clock_.nsecsElapsed());
  std::array<double, kMost> values{};
  std::size_t count = 0;
  for (Duration time = begin + interval; time < duration_; time += interval) {
    if (count == kMost) return false;
    values[count++] = valueAt(time);
  }
  isPlaying_ = player_.play(interval, std::span(values).first(count));
  return isPlaying_;
}

void AlphaFade::stopPlaying() {
  if (!std::exchange(isPlaying_, false)) return;
  player_.stop();
  // The player's present value is not known.
  applied_ = -1;
}

void AlphaFade::apply(double value) {
  if (std::exchange(applied_, value) != value) apply_(value);
}

void AlphaFade::finish() {
  timer_.stop();
  stopPlaying();
  apply(to_);
  // Emptied first, because the call may start another animation.
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

}  // namespace vembrix
