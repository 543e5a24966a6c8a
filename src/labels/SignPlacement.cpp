// The creation of labels: one for each desktop, kept in its own Space.

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "labels/SignAppearance.h"
#include "labels/SpaceSignWindowController.h"
#include "platform/SystemLog.h"
#include "platform/TextSize.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "watchers/MissionControlWatcher.h"

namespace vembrix {
namespace {

/// The margins around the name in points, both sides together.
constexpr Size kMargin{160, 120};
/// The largest size of a label, as a part of the screen.
constexpr Size kLargestPart{0.9, 0.6};

/// Formats Spaces for the log: "[3, 7]".
std::string listed(const std::vector<std::uint64_t>& spaces) {
  std::string text = "[";
  for (const std::uint64_t space : spaces) {
    if (text.size() > 1) text += ", ";
    text += std::to_string(space);
  }
  return text += ']';
}

/// Returns the ids of an answer, each once, in ascending order. Entries that are no ids are left
/// out.
std::vector<std::uint64_t> spaceSet(const PropertyList::Array& answer) {
  std::vector<std::uint64_t> spaces;
  spaces.reserve(answer.size());
  for (const PropertyList& entry : answer) {
    if (const auto id = entry.integer(); id && *id >= 0) {
      spaces.push_back(static_cast<std::uint64_t>(*id));
    }
  }
  std::ranges::sort(spaces);
  spaces.erase(std::unique(spaces.begin(), spaces.end()), spaces.end());
  return spaces;
}

/// Returns whether the answer is that Space alone. This is the common case, and needs no set.
bool isExactly(const PropertyList::Array& answer, std::uint64_t space) {
  return answer.size() == 1 && answer.front().integer() == static_cast<std::int64_t>(space);
}

}  // namespace

const Screen& SpaceSignWindowController::signScreen() {
  const Screens& screens = Screens::shared();
  if (const Screen* main = screens.mainScreen()) return *main;
  if (screens.all().empty()) programmingError("there is no screen for the labels");
  return screens.all().front();
}

Rect SpaceSignWindowController::signFrame(std::string_view text) {
  const Rect screen = signScreen().frame;
  const Size measured = textSize(text, signFont(PreferencesStore::shared().signTextSize()));
  const double width = std::min(measured.width + kMargin.width, kLargestPart.width * screen.width);
  const double height =
      std::min(measured.height + kMargin.height, kLargestPart.height * screen.height);
  return centered({width, height}, screen);
}

void SpaceSignWindowController::ensureSignForActiveSpace() {
  const SpaceInfo* space = SpaceManager::shared().activeSpace();
  // A full-screen Space has no label: it would fade over the program at every return.
  if (!space || !space->isDesktop()) return;
  if (Sign* sign = activeSign()) {
    sign->setText(SpaceManager::shared().displayName(*space));
    return;
  }
  const Sign& sign = makeSign(*space, IncludingActive::Yes, 0);
  pinWindow(sign.window(), space->spaceID);
}

Sign& SpaceSignWindowController::makeSign(const SpaceInfo& space, IncludingActive includingActive,
                                          double alpha) {
  const std::string text = SpaceManager::shared().displayName(space);
  Sign sign(text, signFrame(text));
  sign.setHeat(SpaceHeatTracker::shared().heat(space.uuid, includingActive));
  sign.window().setAlphaValue(alpha);
  sign.window().orderFront();
  return windows_.insert_or_assign(space.spaceID, std::move(sign)).first->second;
}

void SpaceSignWindowController::pinWindow(const SignWindow& window, SpaceID space) {
  WindowServer& server = WindowServer::shared();
  server.CGSAddWindowsToSpaces(server.CGSMainConnectionID(), std::array{window.windowNumber()},
                               std::array{space});
}

void SpaceSignWindowController::reconcileWindowSpaces() {
  if (!WindowServer::shared().canPlaceWindows()) return;
  for (const auto& [space, sign] : windows_) reconcile(sign.window(), space);
}

void SpaceSignWindowController::reconcile(const SignWindow& window, SpaceID space) {
  WindowServer& server = WindowServer::shared();
  const auto connection = server.CGSMainConnectionID();
  const std::array windows{window.windowNumber()};
  const PropertyList answer =
      server.CGSCopySpacesForWindows(connection, WindowServer::allSpaces, windows);
  const PropertyList::Array* ids = answer.asArray();
  // A window that the server reports in no Space is left alone until the server reports one.
  if (!ids || ids->empty() || isExactly(*ids, space)) return;
  std::vector<SpaceID> spaces = spaceSet(*ids);
  if (spaces.empty() || spaces == std::vector{space}) return;
  logLine("sign for space " + std::to_string(space) + " found on " + listed(spaces) +
          " — re-pinning");
  if (std::erase(spaces, space) == 0) pinWindow(window, space);
  if (!spaces.empty()) server.CGSRemoveWindowsFromSpaces(connection, windows, spaces);
}

void SpaceSignWindowController::primeNonActiveSigns() {
  const PreferencesStore& preferences = PreferencesStore::shared();
  if (!preferences.showSignInSwipeMode()) {
    for (auto& [space, sign] : windows_) {
      if (sign.window().alphaValue() != 0) sign.window().setAlphaValue(0);
    }
    return;
  }
  // During the tour the overlay replaces the labels.
  if (isTouring_) return;
  const SpaceID active = SpaceManager::shared().activeSpaceID();
  if (MissionControlWatcher::shared().isActive()) {
    for (auto& [space, sign] : windows_) {
      sign.window().setAlphaValue(space == active ? 0 : 1);
      sign.window().view().setNeedsDisplay();
    }
    return;
  }
  if (isShowing_) return;
  const double alpha = preferences.signSwipeAlpha();
  for (auto& [space, sign] : windows_) {
    if (space == active || dismissedSpaceIDs_.contains(space)) continue;
    if (sign.window().alphaValue() != alpha) sign.window().setAlphaValue(alpha);
  }
}

void SpaceSignWindowController::spacesChanged() {
  std::unordered_set<SpaceID> desktops;
  for (const SpaceInfo& space : SpaceManager::shared().desktops()) desktops.insert(space.spaceID);
  std::erase_if(windows_, [&](const auto& entry) { return !desktops.contains(entry.first); });
  for (const SpaceInfo& space : SpaceManager::shared().spaces()) {
    const auto found = windows_.find(space.spaceID);
    if (found == windows_.end()) continue;
    const std::string name = SpaceManager::shared().displayName(space);
    found->second.setText(name);
    found->second.window().setFrame(signFrame(name));
  }
  refreshHeat();
}

void SpaceSignWindowController::layOutSigns() {
  for (const SpaceInfo& space : SpaceManager::shared().spaces()) {
    const auto found = windows_.find(space.spaceID);
    if (found == windows_.end()) continue;
    found->second.window().setFrame(signFrame(SpaceManager::shared().displayName(space)));
  }
}

void SpaceSignWindowController::prefsDidChange() {
  for (auto& [space, sign] : windows_) sign.prefsChanged();
  layOutSigns();
  refreshHeat();
}

}  // namespace vembrix
