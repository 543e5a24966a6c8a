// The names of Spaces: the user's and the default ones.

#include <algorithm>

#include "platform/NotificationCenter.h"
#include "platform/SpaceNaming.h"
#include "platform/UserDefaults.h"
#include "spaces/SpaceManager.h"
#include "spaces/Whitespace.h"

namespace vembrix {
namespace {

/// Returns the default name of a Space. `number` is its place among the desktops of its display,
/// from 1, or 0 if it is none of them.
std::string defaultName(int number) {
  return number == 0 ? "Desktop" : "Desktop " + std::to_string(number);
}

/// Returns whether a name is only the number, or one word and the number ("Desktop 3", "Workspace
/// 3", "3", "03").
bool isOnlyNumbered(std::string_view name, int number) {
  const std::string digits = std::to_string(number);
  if (!name.ends_with(digits)) return false;
  name.remove_suffix(digits.size());
  while (name.ends_with('0')) name.remove_suffix(1);
  const std::string_view word = trimWhitespace(name);
  return word.find_first_of(" \t0123456789") == std::string_view::npos;
}

}  // namespace

SpaceManager::Names SpaceManager::loadNames() {
  const PropertyList stored = UserDefaults::standard().object(defaultsKey);
  const PropertyList::Dictionary* dictionary = stored.asDictionary();
  if (!dictionary) return {};
  Names names;
  for (const auto& [uuid, name] : *dictionary) {
    const std::string* text = name.asString();
    if (!text) return {};
    names.emplace(uuid, *text);
  }
  return names;
}

void SpaceManager::storeNames() const {
  PropertyList::Dictionary dictionary;
  for (const auto& [uuid, name] : names_) dictionary.emplace(uuid, name);
  UserDefaults::standard().set(defaultsKey, PropertyList(std::move(dictionary)));
}

const std::string* SpaceManager::userName(const SpaceInfo& space) const {
  const auto found = names_.find(space.uuid);
  return found == names_.end() || found->second.empty() ? nullptr : &found->second;
}

std::string SpaceManager::displayName(const SpaceInfo& space) const {
  if (const std::string* name = userName(space)) return *name;
  const int number = numberOf(space);
  if (const SpaceNaming* naming = SpaceNaming::shared()) {
    const std::string_view own = trimWhitespace(naming->ownName(space.spaceID));
    if (!own.empty() && !isOnlyNumbered(own, number)) return std::string(own);
  }
  return defaultName(number);
}

int SpaceManager::numberOf(const SpaceInfo& space) const {
  int number = 0;
  for (const SpaceInfo& other : desktops()) {
    if (other.displayUUID != space.displayUUID) continue;
    number += 1;
    if (other == space) return number;
  }
  return 0;
}

void SpaceManager::setName(std::string_view name, const SpaceInfo& space) {
  const std::string_view trimmed = trimWhitespace(name);
  storeName(trimmed, space);
  if (SpaceNaming* naming = SpaceNaming::shared()) {
    if (trimmed.empty()) {
      naming->clearName(space.spaceID, defaultName(numberOf(space)));
    } else {
      naming->setName(space.spaceID, trimmed);
    }
  }
  NotificationCenter::defaultCenter().post(didChange);
}

void SpaceManager::storeName(std::string_view name, const SpaceInfo& space) {
  if (!name.empty()) {
    names_.insert_or_assign(space.uuid, std::string(name));
  } else if (const auto found = names_.find(space.uuid); found != names_.end()) {
    names_.erase(found);
  }
  storeNames();
}

void SpaceManager::followNaming() {
  SpaceNaming* naming = SpaceNaming::shared();
  if (!naming) return;
  naming->setHandlers({
      .renamed = [](std::uint64_t space, std::string_view name) { shared().renamed(space, name); },
      .ownNamesChanged =
          [] {
            shared().publishNames();
            NotificationCenter::defaultCenter().post(didChange);
          },
  });
}

void SpaceManager::renamed(std::uint64_t spaceID, std::string_view name) {
  const auto space = std::ranges::find(spaces_, spaceID, &SpaceInfo::spaceID);
  if (space == spaces_.end()) return;
  const std::string_view trimmed = trimWhitespace(name);
  const bool isDefault = trimmed.empty() || isOnlyNumbered(trimmed, numberOf(*space));
  storeName(isDefault ? std::string_view() : trimmed, *space);
  NotificationCenter::defaultCenter().post(didChange);
}

void SpaceManager::publishNames() const {
  SpaceNaming* naming = SpaceNaming::shared();
  if (!naming) return;
  for (const SpaceInfo& space : spaces_) {
    if (const std::string* name = userName(space)) naming->setName(space.spaceID, *name);
  }
}

}  // namespace vembrix
