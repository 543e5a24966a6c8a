// Moving the user to another Space.

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/Accessibility.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "platform/WindowServer.h"
#include "settings/PreferencesStore.h"
#include "spaces/DockSwipe.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

constexpr std::chrono::milliseconds kInstantInterval{50};
constexpr std::chrono::milliseconds kAnimatedInterval{220};

/// Returns whether the display's list from the window server holds the Space.
bool holdsSpace(const PropertyList::Array& entries, std::uint64_t spaceID) {
  return std::ranges::any_of(entries, [&](const PropertyList& entry) {
    const std::optional<std::int64_t> id = entry["ManagedSpaceID"].integer();
    return id && *id >= 0 && static_cast<std::uint64_t>(*id) == spaceID;
  });
}

}  // namespace

void SpaceManager::switchToSpace(const SpaceInfo& space) {
  if (space.spaceID == activeSpaceID_) return;
  if (!Accessibility::shared().isProcessTrusted(Accessibility::Prompt::No)) {
    directSwitch(space);
    return;
  }
  const std::optional<std::ptrdiff_t> from = desktopIndex(activeSpaceID_);
  const std::optional<std::ptrdiff_t> to = desktopIndex(space.spaceID);
  if (!from || !to || *from == *to) return;
  const ISSDirection direction = *to > *from ? ISSDirection::Right : ISSDirection::Left;
  const bool instant = PreferencesStore::shared().instantMenuSwitch();
  const Duration interval = instant ? kInstantInterval : kAnimatedInterval;
  const auto swipe = instant ? instantDockSwipe : animatedDockSwipe;
  for (std::ptrdiff_t k = 0; k < std::abs(*to - *from); ++k) {
    MainQueue::main().after(k * interval, [swipe, direction] { swipe(direction); });
  }
}

void SpaceManager::directSwitch(const SpaceInfo& space) {
  WindowServer& server = WindowServer::shared();
  const auto connection = server.CGSMainConnectionID();
  const PropertyList answer = server.CGSCopyManagedDisplaySpaces(connection);
  const PropertyList::Array* displays = answer.asArrayOfDictionaries();
  if (!displays) return;
  for (const PropertyList& display : *displays) {
    const std::string* identifier = display["Display Identifier"].asString();
    const PropertyList::Array* entries = display["Spaces"].asArrayOfDictionaries();
    if (!identifier || !entries || !holdsSpace(*entries, space.spaceID)) continue;
    logLine("direct-switching to space " + std::to_string(space.spaceID) + " (no Accessibility)");
    server.CGSManagedDisplaySetCurrentSpace(connection, *identifier, space.spaceID);
    return;
  }
}

std::optional<std::ptrdiff_t> SpaceManager::desktopIndex(std::uint64_t spaceID) const {
  std::ptrdiff_t index = 0;
  for (const SpaceInfo& space : desktops()) {
    if (space.spaceID == spaceID) return index;
    index += 1;
  }
  return std::nullopt;
}

}  // namespace vembrix
