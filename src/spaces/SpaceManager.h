#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PropertyList.h"
#include "spaces/SpaceInfo.h"

namespace vembrix {

/// The model of the system's Spaces: the list over all displays, the active
/// Space and the user's names. Main thread only; lives as long as the process.
class SpaceManager {
 public:
  /// Default center: the list of Spaces or a name changed.
  static constexpr std::string_view didChange = "SpaceManagerDidChange";
  /// Default center: another Space is active. Posted after didChange when one
  /// reload brings both.
  static constexpr std::string_view activeChanged = "SpaceManagerActiveSpaceChanged";

  static SpaceManager& shared();

  SpaceManager(const SpaceManager&) = delete;
  SpaceManager& operator=(const SpaceManager&) = delete;

  /// All Spaces, full-screen ones included: the displays' lists one after the
  /// other in the window server's order. Empty until the first reload(). The
  /// reference stays valid, its contents until the next reload().
  [[nodiscard]] const std::vector<SpaceInfo>& spaces() const { return spaces_; }

  /// The window server's id of the active Space; 0 before the first reload().
  [[nodiscard]] std::uint64_t activeSpaceID() const { return activeSpaceID_; }

  /// The first listed Space of the active id, or null when none is listed.
  [[nodiscard]] const SpaceInfo* activeSpace() const;

  /// Reads the window server again and posts what changed. What it answers
  /// wrongly counts as absent; a negative Space id ends the program.
  void reload();

  /// The name to show: the user's, else "Desktop N" by the Space's place among
  /// its display's desktops, else (a full-screen or unlisted Space) "Desktop".
  [[nodiscard]] std::string displayName(const SpaceInfo& space) const;

  /// Gives the Space a name, without the white space around it; a blank name
  /// brings the default back. Stores it and posts didChange.
  void setName(std::string_view name, const SpaceInfo& space);

 private:
  using Names = std::map<std::string, std::string, std::less<>>;

  static constexpr std::string_view defaultsKey = "SpaceNames";
  static constexpr std::string_view knownUUIDsKey = "KnownSpaceUUIDs";

  SpaceManager();

  /// Makes `spaces` the list where it differs (then it holds the former one).
  void update(std::vector<SpaceInfo>& spaces, std::uint64_t activeSpaceID);
  /// Adds the desktops of the list to the stored uuids of all ever seen.
  void rememberUUIDs();

  static Names loadNames();
  void storeNames() const;
  [[nodiscard]] const std::string* userName(const SpaceInfo& space) const;
  /// Tells desktops that show names of their own what the user's names are.
  void publishNames() const;

  std::vector<SpaceInfo> spaces_;
  std::uint64_t activeSpaceID_ = 0;
  Names names_;

  /// The last answer; keeps its memory, so that reading an unchanged list needs
  /// none.
  std::vector<SpaceInfo> incoming_;
  /// What rememberUUIDs() stored last.
  PropertyList knownUUIDs_;
};

}  // namespace vembrix
