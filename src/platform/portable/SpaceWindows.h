#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Geometry.h"
#include "platform/WindowServer.h"
#include "platform/WindowTraits.h"

namespace vembrix {

/// A model of the windows on a desktop and the Spaces that hold them. A window enters the active
/// Space when it is first ordered to the front; programs and the desktop move it from there. Main
/// thread.
class SpaceWindows {
 public:
  using SpaceID = WindowServer::SpaceID;
  using WindowNumber = WindowServer::WindowNumber;

  struct Window {
    WindowNumber number = 0;
    std::string owner;
    Rect frame;
    WindowLevel level{};
    /// Bits of CollectionBehavior.
    std::uint64_t collectionBehavior = 0;
    bool isOrderedIn = false;
    /// The Spaces that hold it, in the order in which it was added; unused for windows that join
    /// all Spaces.
    std::vector<SpaceID> spaces;
  };

  /// `activeSpace` returns the Space of new windows.
  explicit SpaceWindows(std::function<SpaceID()> activeSpace)
      : activeSpace_(std::move(activeSpace)) {}

  /// Sets a function that is called, synchronously, when windows were added, removed or moved to
  /// other Spaces; may be empty.
  void watch(std::function<void()> watcher) { watcher_ = std::move(watcher); }

  /// Adds a hidden window and returns its number, which is never reused.
  WindowNumber add(Window window);
  void remove(WindowNumber number);
  /// Returns null for an unknown number. Valid until the window is removed.
  [[nodiscard]] Window* find(WindowNumber number);
  [[nodiscard]] const Window* find(WindowNumber number) const;

  /// Moves the window in front of the others of its level.
  void orderFront(WindowNumber number);
  void orderOut(WindowNumber number);

  // A program's calls to the window server.

  void addToSpaces(std::span<const WindowNumber> windows, std::span<const SpaceID> spaces);
  void removeFromSpaces(std::span<const WindowNumber> windows, std::span<const SpaceID> spaces);
  /// Returns each Space once; `allSpaces` for a window that joins all.
  [[nodiscard]] std::vector<SpaceID> spacesOf(std::span<const WindowNumber> windows,
                                              std::span<const SpaceID> allSpaces) const;

  // Changes by the user or the desktop.

  /// Moves the window to exactly these Spaces.
  void move(WindowNumber number, std::vector<SpaceID> spaces);
  /// Removes Spaces. Windows that were in no other Space move to `refuge`, unless that is 0.
  void removeSpaces(const std::function<bool(SpaceID)>& isGone, SpaceID refuge);

  /// The Space's windows in Mission Control, front to back: those ordered in that do not hide from
  /// it.
  [[nodiscard]] std::vector<WindowNumber> shownByMissionControl(SpaceID space) const;
  /// The windows ordered in that any of the Spaces holds, front to back.
  [[nodiscard]] std::vector<const Window*> onScreen(std::span<const SpaceID> spaces) const;
  /// Returns whether that window is on the screen while only that Space is shown.
  [[nodiscard]] bool isOnScreen(WindowNumber number, SpaceID space) const;

  [[nodiscard]] std::size_t count() const { return windows_.size(); }

 private:
  void notifyWatcher() const;

  std::function<SpaceID()> activeSpace_;
  std::function<void()> watcher_;
  /// Front to back.
  std::list<Window> windows_;
  std::unordered_map<WindowNumber, std::list<Window>::iterator> places_;
  WindowNumber lastNumber_ = 0;
};

}  // namespace vembrix
