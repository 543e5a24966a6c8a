// The names of Spaces: the user's and the default ones.

#include <algorithm>

#include "platform/NotificationCenter.h"
#include "platform/SpaceNaming.h"
#include "platform/UserDefaults.h"
#include "spaces/SpaceManager.h"
#include "spaces/Whitespace.h"

namespace vembrix {

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
  int number = 0;
  for (const SpaceInfo& other : spaces_) {
    if (!other.isDesktop() || other.displayUUID != space.displayUUID) continue;
    number += 1;
    if (other == space) return "Desktop " + std::to_string(number);
  }
  return "Desktop";
}

void SpaceManager::setName(std::string_view name, const SpaceInfo& space) {
  const std::string_view trimmed = trimWhitespace(name);
  if (trimmed.empty()) {
    const auto found = names_.find(space.uuid);
    if (found != names_.end()) names_.erase(found);
  } else {
    names_.insert_or_assign(space.uuid, std::string(trimmed));
  }
  storeNames();
  if (SpaceNaming* naming = SpaceNaming::shared()) {
    naming->setName(space.spaceID, displayName(space));
  }
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
