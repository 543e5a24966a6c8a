#include "spaces/DockSwipe.h"

#include <cmath>

#include "platform/MainQueue.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

constexpr int kAnimatedSteps = 8;
constexpr milliseconds kAnimatedStep{18};

void post(const SwipeMoment& moment) {
  const auto event = DockSwipeEvent::create();
  if (!event) return;
  setFields(*event, moment);
  event->post();
}

}  // namespace

void animatedDockSwipe(ISSDirection direction) {
  const double s = signOf(direction);
  post({dockswipe::Begin, s * 0.001, s * 0.5});
  MainQueue& queue = MainQueue::main();
  for (int step = 1; step <= kAnimatedSteps; ++step) {
    queue.after(step * kAnimatedStep, [s, step] {
      post({dockswipe::Change, s * step / kAnimatedSteps, s * 1.5});
    });
  }
  queue.after((kAnimatedSteps + 1) * kAnimatedStep, [s] {
    post({dockswipe::End, s * 1.0, s * 1.5});
  });
}

void instantDockSwipe(ISSDirection direction) {
  const double s = signOf(direction);
  // A minimal distance at high speed: the system moves without a transition.
  const double progress = s * std::ldexp(1.0, -149);
  for (const auto phase : {dockswipe::Begin, dockswipe::Change, dockswipe::End}) {
    post({phase, progress, s * 400.0});
  }
}

}  // namespace vembrix
