#include "platform/macos/windowserver/MissionControlWindows.h"

#include <algorithm>
#include <utility>

namespace vembrix {
namespace {

// Layers of the window server.
constexpr std::int64_t kDockLayer = 20;
/// WindowManager always has windows in other layers.
constexpr std::int64_t kWindowManagersOverviewLayer = 19;

bool isInDockLayer(const MissionControlWindows::Window& window) {
  return window.program == OverviewProgram::Dock && window.layer == kDockLayer;
}

bool isWindowManagersOverview(const MissionControlWindows::Window& window) {
  return window.program == OverviewProgram::WindowManager &&
         window.layer == kWindowManagersOverviewLayer;
}

}  // namespace

OverviewPrograms::OverviewPrograms(Find find) : find_(std::move(find)) {}

OverviewProgram OverviewPrograms::of(std::int64_t process) {
  // Numbers of processes are reused after these have ended.
  constexpr std::size_t kMostProcesses = 256;
  const auto known = entries_.find(process);
  if (known != entries_.end() &&
      (known->second.program || reading_ - known->second.asked < patience)) {
    return known->second.program.value_or(OverviewProgram::Other);
  }
  if (entries_.size() >= kMostProcesses) entries_.clear();
  Entry& entry = entries_[process];
  entry = {.program = find_(process), .asked = reading_};
  return entry.program.value_or(OverviewProgram::Other);
}

void MissionControlWindows::read(std::span<const Window> windows) {
  if (shownBy_ == ShownBy::Dock) return;
  const bool isShownOtherwise = std::ranges::any_of(windows, isWindowManagersOverview);
  next_.clear();
  for (const Window& window : windows) {
    if (!isInDockLayer(window)) continue;
    const DockWindow* former = find(window);
    const bool hasStood = former && (former->isOrdinary || spaceHasChanged_);
    next_.push_back({window, !hasRead_ || hasStood || isShownOtherwise});
  }
  dockWindows_.swap(next_);
  hasRead_ = true;
  spaceHasChanged_ = false;
}

bool MissionControlWindows::contain(const Window& window) const {
  switch (window.program) {
    case OverviewProgram::Dock:
      if (shownBy_ == ShownBy::DockOrWindowManager && window.layer == kDockLayer) {
        const DockWindow* found = find(window);
        return found && !found->isOrdinary;
      }
      return true;
    case OverviewProgram::WindowManager:
      return shownBy_ == ShownBy::DockOrWindowManager && isWindowManagersOverview(window);
    case OverviewProgram::Other:
      break;
  }
  return false;
}

const MissionControlWindows::DockWindow* MissionControlWindows::find(const Window& window) const {
  const auto found = std::ranges::find(dockWindows_, window, &DockWindow::window);
  return found == dockWindows_.end() ? nullptr : &*found;
}

}  // namespace vembrix
