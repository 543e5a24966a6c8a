#include "spaces/SpaceManager.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <set>
#include <utility>

#include "platform/NotificationCenter.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/WindowServer.h"

namespace vembrix {
namespace {

std::optional<std::uint64_t> spaceIDOf(const PropertyList& entry) {
  std::optional<std::int64_t> id = entry["ManagedSpaceID"].integer();
  if (!id) id = entry["id64"].integer();
  if (!id) return std::nullopt;
  if (*id < 0) programmingError("the window server reported a negative Space id");
  return static_cast<std::uint64_t>(*id);
}

void assignFallbackUUID(std::string& uuid, std::uint64_t spaceID) {
  std::array<char, 20> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), spaceID).ptr;
  uuid.assign("space-").append(digits.data(), end);
}

/// Writes the Spaces of the answer over `list`, whose strings are reused.
class ListReader {
 public:
  explicit ListReader(std::vector<SpaceInfo>& list) : list_(list) {}

  void readDisplays(const PropertyList& answer) {
    if (const auto* displays = answer.asArrayOfDictionaries()) {
      for (const PropertyList& display : *displays) readDisplay(display);
    }
    list_.resize(count_);
  }

 private:
  void readDisplay(const PropertyList& display) {
    const std::string* identifier = display["Display Identifier"].asString();
    const std::string_view displayUUID = identifier ? std::string_view(*identifier) : "Main";
    if (const auto* entries = display["Spaces"].asArrayOfDictionaries()) {
      for (const PropertyList& entry : *entries) readSpace(entry, displayUUID);
    }
  }

  void readSpace(const PropertyList& entry, std::string_view displayUUID) {
    const std::optional<std::uint64_t> id = spaceIDOf(entry);
    if (!id) return;
    if (count_ == list_.size()) list_.emplace_back();
    SpaceInfo& space = list_[count_++];
    space.spaceID = *id;
    space.displayUUID.assign(displayUUID);
    space.type = entry["type"].integer().value_or(0);
    const std::string* uuid = entry["uuid"].asString();
    // The first Space of a display often has an empty uuid. It serves as well as any other until a
    // second display has one, too: the two Spaces would share a name.
    if (uuid && !(uuid->empty() && std::exchange(hasEmptyUUID_, true))) {
      space.uuid.assign(*uuid);
    } else {
      assignFallbackUUID(space.uuid, *id);
    }
  }

  std::vector<SpaceInfo>& list_;
  std::size_t count_ = 0;
  bool hasEmptyUUID_ = false;
};

}  // namespace

SpaceManager& SpaceManager::shared() {
  static SpaceManager manager;
  return manager;
}

SpaceManager::SpaceManager() : names_(loadNames()) {
  followNaming();
}

const SpaceInfo* SpaceManager::activeSpace() const {
  return activePlace_ < spaces_.size() ? &spaces_[activePlace_] : nullptr;
}

void SpaceManager::reload() {
  WindowServer& server = WindowServer::shared();
  const auto connection = server.CGSMainConnectionID();
  ListReader(incoming_).readDisplays(server.CGSCopyManagedDisplaySpaces(connection));
  update(incoming_, server.CGSGetActiveSpace(connection));
}

void SpaceManager::update(std::vector<SpaceInfo>& spaces, std::uint64_t activeSpaceID) {
  const bool listChanged = spaces != spaces_;
  const bool activeSpaceChanged = activeSpaceID != activeSpaceID_;
  if (listChanged) std::swap(spaces_, spaces);
  activeSpaceID_ = activeSpaceID;
  const auto active = std::ranges::find(spaces_, activeSpaceID_, &SpaceInfo::spaceID);
  activePlace_ = static_cast<std::size_t>(active - spaces_.begin());

  if (listChanged) knownUUIDs_ = {};
  rememberUUIDs();
  if (listChanged) publishNames();

  NotificationCenter& center = NotificationCenter::defaultCenter();
  if (listChanged) center.post(didChange);
  if (activeSpaceChanged) center.post(activeChanged);
}

void SpaceManager::rememberUUIDs() {
  UserDefaults& defaults = UserDefaults::standard();
  const PropertyList stored = defaults.object(knownUUIDsKey);
  if (knownUUIDs_.isNull() || stored != knownUUIDs_) {
    std::set<std::string_view> uuids;
    if (const auto* known = stored.asArrayOfStrings()) {
      for (const PropertyList& uuid : *known) uuids.insert(*uuid.asString());
    }
    for (const SpaceInfo& space : desktops()) uuids.insert(space.uuid);
    PropertyList::Array merged;
    merged.reserve(uuids.size());
    for (const std::string_view uuid : uuids) merged.emplace_back(std::string(uuid));
    knownUUIDs_ = PropertyList(std::move(merged));
  }
  defaults.set(knownUUIDsKey, knownUUIDs_);
}

}  // namespace vembrix
