#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/PropertyList.h"
#import "platform/macos/support/Arc.h"
#include "platform/macos/windowserver/MissionControlWindows.h"

namespace vembrix {

/// A window of the list: its value and the native objects behind it, which it owns.
class ListedWindow {
 public:
  [[nodiscard]] const PropertyList& value() const { return value_; }

  /// Takes the present window at this position.
  void update(id window);

  /// Returns the window's facts for MissionControlWindows; empty if no process owns it.
  [[nodiscard]] std::optional<MissionControlWindows::Window> overview(
      OverviewPrograms& programs) const;

  /// The name of the owner in the value.
  enum class OwnerName {
    Own,
    /// "Dock", for any program, because the window may be Mission Control.
    Dock,
    /// No name: the Dock uses the window for another purpose.
    None,
  };

  /// Returns whether the value has changed.
  bool describe(OwnerName ownerName);

 private:
  /// Identifies the window, and with it its process and layer.
  id number_ = nil;
  id owner_ = nil;
  id bounds_ = nil;
  /// An entry of the list that is not a window description.
  id oddity_ = nil;
  std::optional<std::int64_t> process_;
  /// Its program is unknown until queried.
  MissionControlWindows::Window overview_;
  /// Empty if the value is out of date.
  std::optional<OwnerName> ownerName_;
  PropertyList value_;
};

/// Converts the list of windows to values. It is read several times a second and rarely changes, so
/// it reads only the entries it needs and keeps the value of an unchanged window at the same
/// position. Owns its last reading, which is never modified in place. Main thread.
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
  /// The facts of these windows, in their order.
  std::vector<std::optional<MissionControlWindows::Window>> overviews_;
  /// The windows of the Dock and of WindowManager.
  std::vector<MissionControlWindows::Window> candidates_;
  PropertyList values_ = PropertyList::Array();
};

}  // namespace vembrix
