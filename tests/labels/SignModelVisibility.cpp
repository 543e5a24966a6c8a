// The visibility of labels in the model, and the tour.

#include <algorithm>
#include <utility>

#include "labels/SignModel.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

constexpr std::string_view kSwipeMode = "ShowSignInSwipeMode";
constexpr std::string_view kAfterSelection = "ShowSignAfterSelection";

double swipeAlpha() {
  return model::number("SignSwipeAlpha", 0.78);
}

}  // namespace

double SignModel::now(const Alpha& alpha) {
  const Duration time = EmbeddedMainQueue::shared().now();
  if (time >= alpha.end) return alpha.to;
  return alpha.from + (alpha.to - alpha.from) * static_cast<double>((time - alpha.begin).count()) /
                          static_cast<double>((alpha.end - alpha.begin).count());
}

void SignModel::fade(Alpha& alpha, double to, Duration duration) {
  const Duration time = EmbeddedMainQueue::shared().now();
  alpha = {.from = now(alpha), .to = to, .begin = time, .end = time + duration};
}

void SignModel::set(Label& label, double alpha) {
  fade(label.alpha, alpha, Duration::zero());
}

void SignModel::setOthers(double alpha) {
  for (auto& [id, label] : labels_) {
    if (id != active_) set(label, alpha);
  }
}

void SignModel::tick() {
  prime();
  ticks_ += 1;
  if (ticks_ % 10 == 0) putBackStrayLabels();
}

void SignModel::prime() {
  if (!model::isOn(kSwipeMode)) {
    for (auto& [id, label] : labels_) {
      if (now(label.alpha) != 0) set(label, 0);
    }
    return;
  }
  if (isTouring_) return;
  if (missionControl_) {
    for (auto& [id, label] : labels_) {
      set(label, id == active_ ? 0 : 1);
      label.displays += 1;
    }
    return;
  }
  if (isShowing_) return;
  for (auto& [id, label] : labels_) {
    if (id == active_ || wavedAway_.contains(id)) continue;
    if (now(label.alpha) != swipeAlpha()) set(label, swipeAlpha());
  }
}

void SignModel::showAll() {
  if (!model::isOn(kAfterSelection) || missionControl_) return;
  arrivalFade_.reset();
  isShowing_ = true;
  const auto label = labels_.find(active_);
  if (label != labels_.end()) {
    label->second.behavior = transientBehavior;
    set(label->second, 0);
  }
  MainQueue::main().after(milliseconds(500), [this, exception = active_] { rise(exception); });
  end_ = MainQueue::main().schedule(std::chrono::seconds(15), [this] {
    census_.showsEndedByTime += 1;
    hideAll();
  });
}

void SignModel::rise(SpaceID exception) {
  if (!isShowing_) return;
  census_.risenShows += 1;
  for (auto& [id, label] : labels_) {
    if (id != exception) set(label, 1);
  }
}

void SignModel::hideAll() {
  if (!isShowing_) return;
  isShowing_ = false;
  end_.reset();
  arrivalFade_.reset();
  for (auto& [id, label] : labels_) {
    label.behavior = managedBehavior;
    fade(label.alpha, 0, milliseconds(350));
  }
}

void SignModel::swipeBegan(ISSDirection direction) {
  if (!model::isOn(kSwipeMode) || isTouring_) return;
  const double alpha = swipeAlpha();
  arrivalFade_.reset();
  setOthers(alpha);

  const auto all = desktops();
  const auto from = std::ranges::find(all, active_, &model::Space::id);
  if (from == all.end()) return;
  const bool isRight = direction == ISSDirection::Right;
  if (isRight ? from + 1 == all.end() : from == all.begin()) return;
  const model::Space& target = isRight ? from[1] : from[-1];
  if (labels_.contains(target.id)) return;
  census_.neighborsMade += 1;
  Label& label = make(target, heatOf(target.uuid, false), alpha);
  addTo(label, target.id);
  label.spaces.erase(active_);
}

void SignModel::activeChanged() {
  const bool endsAShow = isShowing_;
  if (endsAShow) census_.showsEndedByArrival += 1;
  hideAll();
  wavedAway_.clear();
  const bool isNew = !active() || !labels_.contains(active_);
  ensureLabelOfActiveSpace();
  putBackStrayLabels();
  refreshHeat();
  arrivalFade_.reset();
  if (isTouring_) {
    setOthers(0);
    return;
  }
  const bool swipeMode = model::isOn(kSwipeMode);
  setOthers(swipeMode ? swipeAlpha() : 0);
  if (endsAShow || isNew || !swipeMode) return;
  // Begins on the next turn; the label may have been removed by then.
  arrivalFade_ = MainQueue::main().schedule(Duration::zero(), [this, id = active_] {
    const auto label = labels_.find(id);
    if (label == labels_.end()) return;
    census_.arrivalFades += 1;
    fade(label->second.alpha, 0, milliseconds(500));
  });
}

void SignModel::missionControlChanged() {
  if (missionControl_) {
    census_.missionControls += 1;
    wavedAway_.clear();
  }
  prime();
}

void SignModel::tourWillStart() {
  census_.toursBegun += 1;
  isTouring_ = true;
  for (auto& [id, label] : labels_) set(label, 0);
  if (overlay_) return;
  const Rect screen = model::mainScreen();
  overlay_ = std::make_shared<Overlay>();
  overlay_->frame = {screen.x + screen.width / 2 - 260, screen.y + screen.height / 2 - 48, 520, 96};
  overlay_->alpha.to = 0;
  fade(overlay_->alpha, 1, milliseconds(200));
  overlays_.push_back(overlay_);
}

void SignModel::tourDidEnd() {
  isTouring_ = false;
  if (!overlay_) return;
  fade(overlay_->alpha, 0, milliseconds(250));
  MainQueue::main().after(milliseconds(250), [this, gone = std::exchange(overlay_, nullptr)] {
    std::erase(overlays_, gone);
  });
}

}  // namespace vembrix
