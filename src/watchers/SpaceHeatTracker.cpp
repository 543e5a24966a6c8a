#include "watchers/SpaceHeatTracker.h"

#include <algorithm>

#include "platform/InputMonitor.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

constexpr std::string_view kSpaceHeatRecency = "SpaceHeatRecency";
constexpr std::size_t kMaxEntries = 32;
constexpr std::uint64_t kEngagement = LeftMouseDown | RightMouseDown | OtherMouseDown | KeyDown;

/// The heat by position in the order; later positions are cold.
constexpr double kHeatByPlace[] = {1.0, 0.78, 0.6084, 0.474552, 0.37015056, 0.2887174368};

std::vector<std::string> loadRecency() {
  const PropertyList stored = UserDefaults::standard().object(kSpaceHeatRecency);
  const PropertyList::Array* uuids = stored.asArrayOfStrings();
  if (!uuids) return {};
  std::vector<std::string> recency;
  for (const PropertyList& uuid : *uuids) recency.push_back(*uuid.asString());
  return recency;
}

}  // namespace

SpaceHeatTracker& SpaceHeatTracker::shared() {
  static SpaceHeatTracker tracker;
  return tracker;
}

SpaceHeatTracker::SpaceHeatTracker() : recency_(loadRecency()) {}

void SpaceHeatTracker::start() {
  if (monitor_) return;
  monitor_ = InputMonitor::shared().addGlobalMonitor(kEngagement, [this] { recordEngagement(); });
}

void SpaceHeatTracker::recordEngagement() {
  const SpaceInfo* space = SpaceManager::shared().activeSpace();
  if (!space || !space->isDesktop()) return;
  // This is the common case, at every click and key press.
  if (!recency_.empty() && recency_.front() == space->uuid) return;
  std::erase(recency_, space->uuid);
  recency_.insert(recency_.begin(), space->uuid);
  if (recency_.size() > kMaxEntries) recency_.resize(kMaxEntries);
  PropertyList::Array stored(recency_.begin(), recency_.end());
  UserDefaults::standard().set(kSpaceHeatRecency, PropertyList(std::move(stored)));
  NotificationCenter::defaultCenter().post(didChange);
}

double SpaceHeatTracker::heat(std::string_view spaceUUID, IncludingActive includingActive) const {
  if (!PreferencesStore::shared().heatMapSigns()) return 0;
  const SpaceInfo* excluded =
      includingActive == IncludingActive::No ? SpaceManager::shared().activeSpace() : nullptr;
  std::size_t place = 0;
  for (const std::string& uuid : recency_) {
    if (excluded && uuid == excluded->uuid) continue;
    if (uuid == spaceUUID) return kHeatByPlace[place];
    place += 1;
    if (place == std::size(kHeatByPlace)) break;
  }
  return 0;
}

}  // namespace vembrix
