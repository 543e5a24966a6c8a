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

#include "platform/DockSwipeEvent.h"
#include "platform/NotificationCenter.h"
#include "platform/PropertyList.h"
#include "spaces/SpaceInfo.h"

namespace vembrix {

/// The model of the system's Spaces: the list over all displays, the active Space and the user's
/// names; also moves the user between Spaces. Main thread only; lives as long as the process.
class SpaceManager {
 public:
  /// Default center: the list of Spaces or a name has changed.
  static constexpr std::string_view didChange = "SpaceManagerDidChange";
  /// Default center: another Space is active. Posted after didChange if one reload causes both.
  static constexpr std::string_view activeChanged = "SpaceManagerActiveSpaceChanged";

  /// Default center: the tour after launch is about to begin, or has ended.
  static constexpr std::string_view tourWillStart = "SpaceManagerTourWillStart";
  static constexpr std::string_view tourDidEnd = "SpaceManagerTourDidEnd";

  static SpaceManager& shared();

  SpaceManager(const SpaceManager&) = delete;
  SpaceManager& operator=(const SpaceManager&) = delete;

  /// All Spaces, full-screen ones included: the displays' lists one after the
  /// other in the window server's order. Empty until the first reload(). The
  /// reference stays valid, its contents until the next reload().
  [[nodiscard]] const std::vector<SpaceInfo>& spaces() const { return spaces_; }

  /// The ordinary desktops among them, on all displays; valid until the next reload().
  [[nodiscard]] DesktopView desktops() const { return DesktopView(spaces_); }

  /// The window server's id of the active Space; 0 before the first reload().
  [[nodiscard]] std::uint64_t activeSpaceID() const { return activeSpaceID_; }

  /// The first listed Space of the active id, or null if none is listed.
  [[nodiscard]] const SpaceInfo* activeSpace() const;

  /// Reads the window server again and posts the changes. Malformed entries count as absent; a
  /// negative Space id ends the program.
  void reload();

  /// Returns the name to show: the user's; else the desktop's own, unless it is only a word and the
  /// number; else "Desktop N", with the Space's number among its display's desktops; else, for a
  /// full-screen or unlisted Space, "Desktop".
  [[nodiscard]] std::string displayName(const SpaceInfo& space) const;

  /// Stores the Space's name, without surrounding white space, and posts didChange. A blank name
  /// restores the default.
  void setName(std::string_view name, const SpaceInfo& space);

  /// Moves the user to the Space: by one swipe per desktop, or at once without the permission for
  /// Accessibility. Returns before the system has moved; its notification updates the model. Does
  /// nothing for the active Space and, with the permission, from or to a full-screen Space.
  void switchToSpace(const SpaceInfo& space);

  /// Visits every desktop once and returns to where it began, in at most 20 s; posts tourWillStart
  /// and tourDidEnd. Without another desktop it only calls the completion, which may be empty.
  void performAutoTour(std::function<void()> completion);

 private:
  using Names = std::map<std::string, std::string, std::less<>>;

  static constexpr std::string_view defaultsKey = "SpaceNames";
  static constexpr std::string_view knownUUIDsKey = "KnownSpaceUUIDs";

  SpaceManager();

  /// Replaces the list by `spaces` if they differ.
  void update(std::vector<SpaceInfo>& spaces, std::uint64_t activeSpaceID);
  /// Adds the listed desktops to the stored uuids of all desktops ever seen.
  void rememberUUIDs();

  static Names loadNames();
  void storeNames() const;
  [[nodiscard]] const std::string* userName(const SpaceInfo& space) const;
  /// Stores the name; an empty one is removed.
  void storeName(std::string_view name, const SpaceInfo& space);
  /// Returns the Space's number among the desktops of its display, from 1; 0 if it is none of them.
  [[nodiscard]] int numberOf(const SpaceInfo& space) const;
  /// Passes the user's names to a desktop that shows names itself.
  void publishNames() const;
  /// Starts to follow the names of such a desktop.
  static void followNaming();
  /// Handles a rename of the Space by the user elsewhere.
  void renamed(std::uint64_t spaceID, std::string_view name);

  void directSwitch(const SpaceInfo& space);
  /// Returns the index among the desktops of all displays, from 0.
  [[nodiscard]] std::optional<std::ptrdiff_t> desktopIndex(std::uint64_t spaceID) const;

  void advanceTour();
  void tourStepTimedOut(int step);
  void tourSpaceArrived();
  void endTour();
  /// Returns whether the tour is still at that step.
  [[nodiscard]] bool isAtTourStep(int step) const;

  std::vector<SpaceInfo> spaces_;
  std::uint64_t activeSpaceID_ = 0;
  /// The index of the first Space of the active id; the list's size if there is none. Cached,
  /// because every click and label needs it.
  std::size_t activePlace_ = 0;
  Names names_;

  /// The remaining swipes.
  std::deque<ISSDirection> tourQueue_;
  std::function<void()> tourCompletion_;
  /// Empty unless a tour is under way.
  Observation tourObserver_;
  /// Counts from 1.
  int tourStep_ = 0;
  /// Whether the current step has been swiped twice.
  bool tourRetried_ = false;
  std::optional<ISSDirection> currentTourDirection_;

  /// The last answer, whose memory is reused for the next.
  std::vector<SpaceInfo> incoming_;
  /// The value that rememberUUIDs() stored last.
  PropertyList knownUUIDs_;
};

}  // namespace vembrix
