#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/WindowServer.h"
#include "platform/WindowTraits.h"

namespace vembrix {

/// The windows on the embedded desktop and the Spaces that hold them. A window is
/// born when it is first ordered to the front, in the Space that is active then; from
/// there programs and the desktop itself move it. Main thread.
class EmbeddedWindows {
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
  explicit EmbeddedWindows(std::function<SpaceID()> activeSpace)
      : activeSpace_(std::move(activeSpace)) {}

  /// A window out of sight; its number, never used again.
  WindowNumber add(Window window);
  void remove(WindowNumber number);
  /// Null for an unknown number; valid until windows are added or removed.
  [[nodiscard]] Window* find(WindowNumber number);

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
  /// A Space is gone: windows that were in no other find themselves in `refuge`; 0 for
  /// none.
  void spaceRemoved(SpaceID space, SpaceID refuge);

  /// What Mission Control shows of the Space, front to back: the windows there that are
  /// ordered in, but for those that hide from it.
  [[nodiscard]] std::vector<WindowNumber> shownByMissionControl(SpaceID space) const;
  /// The windows ordered in that any of the Spaces holds, front to back.
  [[nodiscard]] std::vector<const Window*> onScreen(std::span<const SpaceID> spaces) const;

  [[nodiscard]] std::size_t count() const { return windows_.size(); }

 private:
  std::function<SpaceID()> activeSpace_;
  /// Front to back.
  std::vector<Window> windows_;
  WindowNumber lastNumber_ = 0;
};

}  // namespace vembrix
