#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/PropertyList.h"
#include "spaces/ISSDirection.h"
#include "spaces/SpaceInfo.h"

namespace vembrix {

/// The model of the system's Spaces: the list over all displays, the active
/// Space, the user's names, and the ways to another Space. Main thread only; lives as long as the
/// process.
class SpaceManager {
 public:
  /// Default center: the list of Spaces or a name changed.
  static constexpr std::string_view didChange = "SpaceManagerDidChange";
  /// Default center: another Space is active. Posted after didChange when one
  /// reload brings both.
  static constexpr std::string_view activeChanged = "SpaceManagerActiveSpaceChanged";

  /// Default center: the tour after launch begins, has ended.
  static constexpr std::string_view tourWillStart = "SpaceManagerTourWillStart";
  static constexpr std::string_view tourDidEnd = "SpaceManagerTourDidEnd";

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

  /// The name to show: the user's, else, where the desktop names its Spaces, the
  /// desktop's own unless it is only a word and the number, else "Desktop N" by the
  /// Space's place among its display's desktops, else (a full-screen or unlisted
  /// Space) "Desktop".
  [[nodiscard]] std::string displayName(const SpaceInfo& space) const;

  /// Gives the Space a name, without the white space around it; a blank name
  /// brings the default back. Stores it and posts didChange.
  void setName(std::string_view name, const SpaceInfo& space);

  /// Moves the user to the Space: by one swipe per desktop to cross, or, without
  /// the permission for Accessibility, at once. Returns before the system is
  /// there; its notification brings the model along. Does nothing for the active
  /// Space and, with the permission, from or to a full-screen Space.
  void switchToSpace(const SpaceInfo& space);

  /// Visits every desktop once and comes back, at most for 20 s, between
  /// tourWillStart and tourDidEnd. Where there is nothing to visit only the
  /// completion is called. The completion may be empty.
  void performAutoTour(std::function<void()> completion);

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
  /// Stores the name; an empty one is taken away.
  void storeName(std::string_view name, const SpaceInfo& space);
  /// The Space's number among the desktops of its display, from 1; 0 if it is none.
  [[nodiscard]] int numberOf(const SpaceInfo& space) const;
  /// Hands the user's names to desktops that show names of their own.
  void publishNames() const;
  /// Follows the names of such desktops.
  static void followNaming();
  /// The user has renamed the Space elsewhere.
  void renamed(std::uint64_t spaceID, std::string_view name);

  void directSwitch(const SpaceInfo& space);
  /// The place (from 0) among the desktops of all displays.
  [[nodiscard]] std::optional<std::ptrdiff_t> desktopIndex(std::uint64_t spaceID) const;

  void advanceTour();
  void tourStepTimedOut(int step);
  void tourSpaceArrived();
  void endTour();
  /// Whether the tour runs and has not gone on from that step.
  [[nodiscard]] bool isAtTourStep(int step) const;

  std::vector<SpaceInfo> spaces_;
  std::uint64_t activeSpaceID_ = 0;
  /// The place of the first Space of that id, which is asked for at every click and for
  /// every label; past the list where there is none.
  std::size_t activePlace_ = 0;
  Names names_;

  /// The way still to go.
  std::deque<ISSDirection> tourQueue_;
  std::function<void()> tourCompletion_;
  /// Held exactly while a tour runs.
  Observation tourObserver_;
  /// Counts from 1.
  int tourStep_ = 0;
  /// Whether the current step has been swiped twice.
  bool tourRetried_ = false;
  std::optional<ISSDirection> currentTourDirection_;

  /// The last answer; keeps its memory, so that reading an unchanged list needs
  /// none.
  std::vector<SpaceInfo> incoming_;
  /// What rememberUUIDs() stored last.
  PropertyList knownUUIDs_;
};

}  // namespace vembrix
