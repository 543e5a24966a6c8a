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

/// The programs that matter to the question whether Mission Control is open.
enum class OverviewProgram { Other, Dock, WindowManager };

/// Tells which program a process is. The system is asked once about each process that it
/// knows; about one that it does not know, which may only be starting, it is asked again
/// later. Main thread.
class OverviewPrograms {
 public:
  /// Readings of the window list from one question about an unknown process to the next.
  static constexpr std::uint64_t patience = 20;

  /// Nothing where the system does not know the process.
  using Find = std::function<std::optional<OverviewProgram>(std::int64_t process)>;

  explicit OverviewPrograms(Find find);

  /// Before each reading of the window list.
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

/// Decides which windows of the system's programs may be Mission Control; whether they
/// are large enough for it is not decided here. Main thread.
///
/// Up to macOS 26 every window of the Dock may be. From macOS 27 on WindowManager's
/// windows in the layer below the Dock's own may be, which is what most have measured. On
/// some of these systems a window of the Dock in its own layer is the only sign, and on
/// some the Dock keeps one as large as the screen while Mission Control is closed. So
/// those count only while nothing speaks against them: not when they are there without a
/// pause since the start, have outlived a change of Space, or stand beside a window of
/// WindowManager's that counts. What is wrong by this is right again at the next change
/// of Space, or as soon as Mission Control closes.
class MissionControlWindows {
 public:
  /// Which programs show Mission Control.
  enum class ShownBy { Dock, DockOrWindowManager };

  struct Window {
    /// The same from one reading to the next, as long as the window exists.
    std::int64_t number = 0;
    OverviewProgram program = OverviewProgram::Other;
    std::int64_t layer = 0;
    /// In points. With another size a window counts as another one.
    Size size;
    bool operator==(const Window&) const = default;
  };

  explicit MissionControlWindows(ShownBy shownBy) : shownBy_(shownBy) {}

  /// All windows of the Dock and of WindowManager that are on the screen now.
  void read(std::span<const Window> windows);
  /// Another Space has become the active one.
  void activeSpaceDidChange() { spaceHasChanged_ = true; }

  /// Whether the window, one of the last reading, may be Mission Control.
  [[nodiscard]] bool contain(const Window& window) const;

 private:
  struct DockWindow {
    Window window;
    /// The Dock has it for other purposes.
    bool isOrdinary = false;
  };

  [[nodiscard]] const DockWindow* find(const Window& window) const;

  const ShownBy shownBy_;
  /// Those in the Dock's own layer in the last reading. Taking turns with the other
  /// vector, so that a reading allocates nothing.
  std::vector<DockWindow> dockWindows_;
  std::vector<DockWindow> next_;
  bool hasRead_ = false;
  bool spaceHasChanged_ = false;
};

}  // namespace vembrix
