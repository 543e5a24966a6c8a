#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/Geometry.h"

namespace vembrix {

/// The programs that may show Mission Control.
enum class OverviewProgram { Other, Dock, WindowManager };

/// Identifies the program of a process. Asks the system once about each known process, and again
/// later about an unknown one, which may be starting. Main thread.
class OverviewPrograms {
 public:
  /// Readings of the window list between two queries about an unknown process.
  static constexpr std::uint64_t patience = 20;

  /// Returns empty if the system does not know the process.
  using Find = std::function<std::optional<OverviewProgram>(std::int64_t process)>;

  explicit OverviewPrograms(Find find);

  /// To be called before each reading of the window list.
  void beginReading() { reading_ += 1; }
  OverviewProgram of(std::int64_t process);

 private:
  struct Entry {
    std::optional<OverviewProgram> program;
    /// The reading in which the system was last asked.
    std::uint64_t asked = 0;
  };

  const Find find_;
  std::uint64_t reading_ = 0;
  std::unordered_map<std::int64_t, Entry> entries_;
};

/// Decides which windows of the system's programs may be Mission Control, regardless of their size.
/// Main thread.
///
/// Up to macOS 26 any window of the Dock may be. From macOS 27 on it is usually a WindowManager
/// window in the layer below the Dock's own. On some of these systems a Dock window in the Dock's
/// own layer is the only sign; on others the Dock keeps one as large as the screen while Mission
/// Control is closed. Such a Dock window counts unless it has been there since the start, has
/// outlived a change of Space, or appears beside a WindowManager window that counts. A wrong result
/// lasts until the next change of Space or the end of Mission Control.
class MissionControlWindows {
 public:
  /// The programs that show Mission Control.
  enum class ShownBy { Dock, DockOrWindowManager };

  struct Window {
    /// Constant for the life of the window.
    std::int64_t number = 0;
    OverviewProgram program = OverviewProgram::Other;
    std::int64_t layer = 0;
    /// In points. A window of another size counts as another one.
    Size size;
    bool operator==(const Window&) const = default;
  };

  explicit MissionControlWindows(ShownBy shownBy) : shownBy_(shownBy) {}

  /// Takes all windows of the Dock and of WindowManager that are on the screen.
  void read(std::span<const Window> windows);
  /// To be called when another Space has become active.
  void activeSpaceDidChange() { spaceHasChanged_ = true; }

  /// Returns whether the window, one of the last reading, may be Mission Control.
  [[nodiscard]] bool contain(const Window& window) const;

 private:
  struct DockWindow {
    Window window;
    /// Whether the Dock uses it for another purpose.
    bool isOrdinary = false;
  };

  [[nodiscard]] const DockWindow* find(const Window& window) const;

  const ShownBy shownBy_;
  /// Windows in the Dock's own layer in the last reading. Swapped with the other vector, so that a
  /// reading allocates nothing.
  std::vector<DockWindow> dockWindows_;
  std::vector<DockWindow> next_;
  bool hasRead_ = false;
  bool spaceHasChanged_ = false;
};

}  // namespace vembrix
