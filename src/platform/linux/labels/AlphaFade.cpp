#include "platform/linux/labels/AlphaFade.h"

#include <QEasingCurve>
#include <QGuiApplication>
#include <QPointF>
#include <QScreen>
#include <QTimerEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>

namespace vembrix {
namespace {

/// The curve by which AppKit eases in and out.
const QEasingCurve& easing() {
  static const QEasingCurve curve = [] {
    QEasingCurve bezier(QEasingCurve::BezierSpline);
    bezier.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return bezier;
  }();
  return curve;
}

/// Between two pictures of the screen, in milliseconds.
int pictureInterval() {
  constexpr double kUsualRate = 60;
  constexpr double kSlowest = 30;
  constexpr double kFastest = 120;
  const QScreen* screen = QGuiApplication::primaryScreen();
  // Virtual screens report 0.
  const double rate = screen && screen->refreshRate() > 1 ? screen->refreshRate() : kUsualRate;
  return static_cast<int>(std::lround(1000 / std::clamp(rate, kSlowest, kFastest)));
}

}  // namespace

AlphaFade::AlphaFade(std::function<void(double)> apply) : apply_(std::move(apply)) {}

double AlphaFade::value() const {
  if (!isRunning()) return to_;
  const double progress =
      static_cast<double>(clock_.nsecsElapsed()) / static_cast<double>(duration_.count());
  return progress < 1 ? from_ + (to_ - from_) * easing().valueForProgress(progress) : to_;
}

void AlphaFade::setGradual(bool gradual) {
  if (std::exchange(isGradual_, gradual) == gradual || !isRunning()) return;
  waitForStep();
}

void AlphaFade::set(double value) {
  timer_.stop();
  ended_ = nullptr;
  to_ = value;
  apply(value);
}

void AlphaFade::animate(double value, Duration duration, std::function<void()> ended) {
  from_ = this->value();
  to_ = value;
  duration_ = duration;
  ended_ = std::move(ended);
  if (duration <= Duration::zero() || from_ == to_) {
    finish();
    return;
  }
  clock_.start();
  timer_.start(pictureInterval(), Qt::PreciseTimer, this);
}

void AlphaFade::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return;
  const double value = this->value();
  if (Duration(clock_.nsecsElapsed()) >= duration_) {
    finish();
    return;
  }
  apply(value);
  if (!isGradual_) waitForStep();
}

void AlphaFade::waitForStep() {
  const Duration left = duration_ - Duration(clock_.nsecsElapsed());
  const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
  const int rest = static_cast<int>(std::max<std::int64_t>(milliseconds, 0));
  timer_.start(isGradual_ ? pictureInterval() : rest, Qt::PreciseTimer, this);
}

void AlphaFade::apply(double value) {
  if (std::exchange(applied_, value) != value) apply_(value);
}

void AlphaFade::finish() {
  timer_.stop();
  apply(to_);
  // Emptied first: it may start another animation.
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

}  // namespace vembrix
