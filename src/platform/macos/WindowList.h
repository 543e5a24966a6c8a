#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/PropertyList.h"
#import "platform/macos/Arc.h"
#include "platform/macos/MissionControlWindows.h"

namespace vembrix {

/// One window of the list: as a value, and the native objects that it came from, which
/// it owns.
class ListedWindow {
 public:
  [[nodiscard]] const PropertyList& value() const { return value_; }

  /// Takes the window that is at this place now.
  void update(id window);

  /// What the window is for the question whether Mission Control is open; nothing for
  /// one that no process owns.
  [[nodiscard]] std::optional<MissionControlWindows::Window> overview(
      OverviewPrograms& programs) const;

  /// By which name its owner goes in the value.
  enum class OwnerName {
    Own,
    /// It may be Mission Control: the Dock's, whichever program it is.
    Dock,
    /// The Dock has it for other purposes.
    None,
  };

  /// Whether the value is another one now.
  bool describe(OwnerName ownerName);

 private:
  /// A window keeps its number, and with it its process and layer.
  id number_ = nil;
  id owner_ = nil;
  id bounds_ = nil;
  /// What stands in the list in place of a description.
  id oddity_ = nil;
  std::optional<std::int64_t> process_;
  /// Its program is not known until it is asked for.
  MissionControlWindows::Window overview_;
  /// Nothing when the value is to be made anew.
  std::optional<OwnerName> ownerName_;
  PropertyList value_;
};

/// The list of windows as values. It is read several times a second, of a window's ten
/// entries few are wanted, and from one reading to the next hardly a window changes: so
/// only those are looked at, and a window that is as it was at its place keeps its
/// value. Owns what it read last; nothing of that changes in place. Main thread.
class WindowList {
 public:
  WindowList();

  PropertyList read(NSArray* windows);

 private:
  [[nodiscard]] ListedWindow::OwnerName ownerNameOf(
      const std::optional<MissionControlWindows::Window>& window) const;

  OverviewPrograms programs_;
  MissionControlWindows missionControl_;
  Observation activeSpace_;
  /// Front to back.
  std::vector<ListedWindow> windows_;
  /// Of these windows, in their order.
  std::vector<std::optional<MissionControlWindows::Window>> overviews_;
  /// The ones of the Dock and of WindowManager.
  std::vector<MissionControlWindows::Window> candidates_;
  PropertyList values_ = PropertyList::Array();
};

}  // namespace vembrix
