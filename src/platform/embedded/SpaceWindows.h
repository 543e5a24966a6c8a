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

/// The windows on a desktop and the Spaces that hold them. A window is born when it is
/// first ordered to the front, in the Space that is active then; from there programs
/// and the desktop itself move it. Shows nothing by itself. Main thread.
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
    /// The Spaces that hold it, in the order in which it came there; not used for
    /// windows that join all Spaces.
    std::vector<SpaceID> spaces;
  };

  /// `activeSpace` tells where windows are born.
  explicit SpaceWindows(std::function<SpaceID()> activeSpace)
      : activeSpace_(std::move(activeSpace)) {}

  /// Told at once, in the call, when windows have come, gone or moved to other Spaces;
  /// empty for nobody.
  void watch(std::function<void()> watcher) { watcher_ = std::move(watcher); }

  /// A window out of sight; its number, never used again.
  WindowNumber add(Window window);
  void remove(WindowNumber number);
  /// Null for an unknown number; valid until the window is removed.
  [[nodiscard]] Window* find(WindowNumber number);
  [[nodiscard]] const Window* find(WindowNumber number) const;

  /// Before the others of its level.
  void orderFront(WindowNumber number);
  void orderOut(WindowNumber number);

  // What a program asks of the window server.

  void addToSpaces(std::span<const WindowNumber> windows, std::span<const SpaceID> spaces);
  void removeFromSpaces(std::span<const WindowNumber> windows, std::span<const SpaceID> spaces);
  /// Each once; of a window that joins all, `allSpaces`.
  [[nodiscard]] std::vector<SpaceID> spacesOf(std::span<const WindowNumber> windows,
                                              std::span<const SpaceID> allSpaces) const;

  // What happens behind the program's back.

  /// The window is in exactly these Spaces from now on.
  void move(WindowNumber number, std::vector<SpaceID> spaces);
  /// Spaces are gone: windows that were in no other find themselves in `refuge`; 0 for
  /// none.
  void removeSpaces(const std::function<bool(SpaceID)>& isGone, SpaceID refuge);

  /// What Mission Control shows of the Space, front to back: the windows there that are
  /// ordered in, but for those that hide from it.
  [[nodiscard]] std::vector<WindowNumber> shownByMissionControl(SpaceID space) const;
  /// The windows ordered in that any of the Spaces holds, front to back.
  [[nodiscard]] std::vector<const Window*> onScreen(std::span<const SpaceID> spaces) const;
  /// Whether that window is one of them while the Space alone is shown.
  [[nodiscard]] bool isOnScreen(WindowNumber number, SpaceID space) const;

  [[nodiscard]] std::size_t count() const { return windows_.size(); }

 private:
  void tell() const;

  std::function<SpaceID()> activeSpace_;
  std::function<void()> watcher_;
  /// Front to back.
  std::list<Window> windows_;
  std::unordered_map<WindowNumber, std::list<Window>::iterator> places_;
  WindowNumber lastNumber_ = 0;
};

}  // namespace vembrix
