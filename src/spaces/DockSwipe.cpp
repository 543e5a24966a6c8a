#include "spaces/DockSwipe.h"

#include <cmath>

#include "platform/DockSwipeEvent.h"
#include "platform/MainQueue.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

constexpr int kAnimatedSteps = 8;
constexpr milliseconds kAnimatedStep{18};

double sign(ISSDirection direction) {
  return direction == ISSDirection::Right ? 1.0 : -1.0;
}

void postSwipe(dockswipe::Phase phase, double progress, double velocity) {
  const auto event = DockSwipeEvent::create();
  if (!event) return;
  event->setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
  event->setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
  event->setIntegerField(dockswipe::GesturePhase, phase);
  event->setDoubleField(dockswipe::Progress, progress);
  event->setIntegerField(dockswipe::Motion, dockswipe::kHorizontal);
  event->setDoubleField(dockswipe::VelocityX, velocity);
  event->setDoubleField(dockswipe::VelocityY, velocity);
  event->post();
}

}  // namespace

void animatedDockSwipe(ISSDirection direction) {
  const double s = sign(direction);
  postSwipe(dockswipe::Begin, s * 0.001, s * 0.5);
  MainQueue& queue = MainQueue::main();
  for (int step = 1; step <= kAnimatedSteps; ++step) {
    queue.after(step * kAnimatedStep,
                [s, step] { postSwipe(dockswipe::Change, s * step / kAnimatedSteps, s * 1.5); });
  }
  queue.after((kAnimatedSteps + 1) * kAnimatedStep,
              [s] { postSwipe(dockswipe::End, s * 1.0, s * 1.5); });
}

void instantDockSwipe(ISSDirection direction) {
  const double s = sign(direction);
  // A minimal distance at high speed: the system moves without a transition.
  const double progress = s * std::ldexp(1.0, -149);
  for (const auto phase : {dockswipe::Begin, dockswipe::Change, dockswipe::End}) {
    postSwipe(phase, progress, s * 400.0);
  }
}

}  // namespace vembrix
