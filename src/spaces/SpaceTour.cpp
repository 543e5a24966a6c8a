// The tour through all desktops after launch.

#include <iterator>
#include <string>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "spaces/DockSwipe.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kStepTimeout{1200};
/// Lets the system settle in the Space before the next swipe.
constexpr milliseconds kArrivalPause{80};
constexpr seconds kHardTimeout{20};

}  // namespace

void SpaceManager::performAutoTour(std::function<void()> completion) {
  const auto count = std::ranges::distance(desktops());
  const std::optional<std::ptrdiff_t> start = desktopIndex(activeSpaceID_);
  if (count < 2 || !start) {
    if (completion) completion();
    return;
  }
  // Goes to the last desktop, back to the first, and then to the start.
  tourQueue_.assign(static_cast<std::size_t>(count - 1 - *start), ISSDirection::Right);
  tourQueue_.insert(tourQueue_.end(), static_cast<std::size_t>(count - 1), ISSDirection::Left);
  tourQueue_.insert(tourQueue_.end(), static_cast<std::size_t>(*start), ISSDirection::Right);
  tourCompletion_ = std::move(completion);
  tourStep_ = 0;
  tourRetried_ = false;
  tourObserver_ = NotificationCenter::workspace().addObserver(notification::kActiveSpaceDidChange,
                                                              [this] { tourSpaceArrived(); });
  logLine("tour start: " + std::to_string(tourQueue_.size()) + " steps");
  NotificationCenter::defaultCenter().post(tourWillStart);
  MainQueue::main().after(kHardTimeout, [this] {
    if (!tourObserver_) return;
    logLine("tour hard timeout after 20s, forcing end");
    endTour();
  });
  advanceTour();
}

void SpaceManager::advanceTour() {
  if (!tourObserver_) return;
  if (tourQueue_.empty()) {
    endTour();
    return;
  }
  currentTourDirection_ = tourQueue_.front();
  tourQueue_.pop_front();
  tourRetried_ = false;
  tourStep_ += 1;
  animatedDockSwipe(*currentTourDirection_);
  MainQueue::main().after(kStepTimeout, [this, step = tourStep_] { tourStepTimedOut(step); });
}

void SpaceManager::tourStepTimedOut(int step) {
  if (!isAtTourStep(step)) return;
  const std::string line = "tour step " + std::to_string(step);
  if (tourRetried_ || !currentTourDirection_) {
    logLine(line + " timed out, advancing");
    advanceTour();
    return;
  }
  tourRetried_ = true;
  logLine(line + " retrying swipe");
  animatedDockSwipe(*currentTourDirection_);
  MainQueue::main().after(kStepTimeout, [this, step, line] {
    if (!isAtTourStep(step)) return;
    logLine(line + " timed out after retry, skipping");
    advanceTour();
  });
}

bool SpaceManager::isAtTourStep(int step) const {
  return tourObserver_ && tourStep_ == step;
}

void SpaceManager::tourSpaceArrived() {
  MainQueue::main().after(kArrivalPause, [this, step = tourStep_] {
    if (isAtTourStep(step)) advanceTour();
  });
}

void SpaceManager::endTour() {
  tourObserver_.reset();
  logLine("tour end");
  NotificationCenter::defaultCenter().post(tourDidEnd);
  if (const auto completion = std::exchange(tourCompletion_, nullptr)) completion();
}

}  // namespace vembrix
