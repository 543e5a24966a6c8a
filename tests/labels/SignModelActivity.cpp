// The user's activity in the model: Mission Control, the mouse, swipes, clicks.

#include <algorithm>
#include <cmath>
#include <utility>

#include "labels/SignModel.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

/// Returns whether the point is inside; the right and the upper edge are outside.
bool holds(const Rect& frame, Point p) {
  return frame.x <= p.x && p.x < frame.x + frame.width && frame.y <= p.y &&
         p.y < frame.y + frame.height;
}

}  // namespace

void SignModel::lookForMissionControl() {
  const bool isOpen = model::isMissionControlOpen();
  if (isOpen == missionControl_) return;
  missionControl_ = isOpen;
  // The user may have reordered the Spaces in Mission Control.
  if (!isOpen) reload();
  missionControlChanged();
}

void SignModel::mouseMoved() {
  mouseOverLabels();
  mouseInCorner();
}

void SignModel::mouseOverLabels() {
  if (missionControl_) return;
  const Point p = model::mouse();
  if (isShowing_) {
    if (std::ranges::any_of(labels_, [&](const auto& e) { return holds(e.second.frame, p); })) {
      census_.showsEndedByTouch += 1;
      hideAll();
    }
    return;
  }
  const auto label = labels_.find(active_);
  if (label == labels_.end()) return;
  if (now(label->second.alpha) > 0.05 && holds(label->second.frame, p)) {
    census_.wavedAway += 1;
    wavedAway_.insert(active_);
    fade(label->second.alpha, 0, milliseconds(300));
  }
}

void SignModel::mouseInCorner() {
  const Point p = model::mouse();
  const Rect screen = model::mainScreen();
  const double top = screen.y + screen.height;
  const bool isInCorner = screen.x <= p.x && p.x <= screen.x + 5 && top - 5 <= p.y && p.y <= top;
  if (isInCorner && cornerIsArmed_) MainQueue::main().async([this] { showAll(); });
  cornerIsArmed_ = !isInCorner;
}

void SignModel::gesture(std::uint32_t type, const TappedEvent& event) {
  if (type == 0xFFFFFFFE || type == 0xFFFFFFFF) tap_->enable();
  if (!watchesSwipes_) return;
  if (event.integerField(41) != 0 || event.integerField(55) != 30 ||
      event.integerField(110) != 23) {
    return;
  }
  const std::int64_t phase = event.integerField(132);
  if (phase == 4 || phase == 8) swipeIsKnown_ = false;
  if ((phase != 1 && phase != 2) || std::exchange(swipeIsKnown_, true)) return;
  const double velocity = event.doubleField(129);
  const double way = velocity != 0 ? velocity : event.doubleField(124);
  const auto direction = way >= 0 ? ISSDirection::Right : ISSDirection::Left;
  MainQueue::main().async([this, direction] { swipeBegan(direction); });
}

void SignModel::clickedOrTyped() {
  const model::Space* space = active();
  if (!space || space->type != 0) return;
  if (!recency_.empty() && recency_.front() == space->uuid) return;
  std::erase(recency_, space->uuid);
  recency_.insert(recency_.begin(), space->uuid);
  if (recency_.size() > 32) {
    census_.fullRecencies += 1;
    recency_.resize(32);
  }
  refreshHeat();
}

double SignModel::heatOf(const std::string& uuid, bool includingActive) const {
  if (!model::isOn("HeatMapSigns")) return 0;
  const model::Space* excluded = includingActive ? nullptr : active();
  int place = 0;
  for (const std::string& used : recency_) {
    if (excluded && used == excluded->uuid) continue;
    if (used == uuid) return place > 5 ? 0 : std::pow(0.78, place);
    place += 1;
  }
  return 0;
}

}  // namespace vembrix
