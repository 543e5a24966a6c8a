#include "watchers/MissionControlWatcher.h"

#include <algorithm>
#include <utility>

#include "platform/NotificationCenter.h"
#include "platform/Screens.h"
#include "platform/SystemLog.h"
#include "platform/WindowServer.h"

namespace vembrix {
namespace {

constexpr std::chrono::milliseconds kPollInterval{300};
constexpr double kCoveredWidth = 0.9;
constexpr double kCoveredHeight = 0.8;

bool coversScreen(const PropertyList& window) {
  const std::string* owner = window["kCGWindowOwnerName"].asString();
  if (!owner || *owner != "Dock") return false;
  const PropertyList& bounds = window["kCGWindowBounds"];
  const std::optional<double> width = bounds["Width"].number();
  const std::optional<double> height = bounds["Height"].number();
  if (!width || !height) return false;
  return std::ranges::any_of(Screens::shared().all(), [&](const Screen& screen) {
    return *width >= kCoveredWidth * screen.frame.width &&
           *height >= kCoveredHeight * screen.frame.height;
  });
}

}  // namespace

MissionControlWatcher& MissionControlWatcher::shared() {
  static MissionControlWatcher watcher;
  return watcher;
}

void MissionControlWatcher::start() {
  if (timer_) return;
  timer_ = MainQueue::main().poll(Duration::zero(), kPollInterval, [this] { poll(); });
}

void MissionControlWatcher::poll() {
  const bool active = detect();
  if (active == isActive_) return;
  isActive_ = active;
  logLine(active ? "Mission Control opened" : "Mission Control closed");
  NotificationCenter::defaultCenter().post(didChange);
}

bool MissionControlWatcher::detect() {
  PropertyList answer = WindowServer::shared().CGWindowListCopyWindowInfo(
      WindowServer::onScreenOnly | WindowServer::excludeDesktopElements);
  const std::vector<Screen>& screens = Screens::shared().all();
  if (answer == answer_ && screens == screens_) return isCovered_;
  answer_ = std::move(answer);
  screens_ = screens;
  const PropertyList::Array* windows = answer_.asArrayOfDictionaries();
  isCovered_ = windows && std::ranges::any_of(*windows, coversScreen);
  return isCovered_;
}

}  // namespace vembrix
