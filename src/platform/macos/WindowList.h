#pragma once

#import <Foundation/Foundation.h>

#include <sys/types.h>

#include <unordered_map>
#include <vector>

#include "platform/PropertyList.h"
#import "platform/macos/Arc.h"

namespace vembrix {

/// Tells which programs show Mission Control. Their windows are told as the Dock's,
/// whatever the program is called: the system translates names, and has given Mission
/// Control to another program. Each program is asked about once. Main thread.
class MissionControlOwners {
 public:
  [[nodiscard]] bool owns(NSDictionary* window);

 private:
  enum class Program { Other, Dock, WindowManager };

  Program programOf(pid_t process);
  static Program find(pid_t process);

  std::unordered_map<pid_t, Program> programs_;
};

/// One window of the list: as a value, and the native objects that it came from, which
/// it owns.
class ListedWindow {
 public:
  [[nodiscard]] const PropertyList& value() const { return value_; }

  /// Whether the value is another one now.
  bool update(id window, MissionControlOwners& missionControl);

 private:
  /// A window keeps its number, and with it its process and layer.
  id number_ = nil;
  id owner_ = nil;
  id bounds_ = nil;
  PropertyList value_;
};

/// The list of windows as values. It is read several times a second, of a window's ten
/// entries few are wanted, and from one reading to the next hardly a window changes: so
/// only those are looked at, and a window that is as it was at its place keeps its
/// value. Owns what it read last; nothing of that changes in place. Main thread.
class WindowList {
 public:
  PropertyList read(NSArray* windows);

 private:
  MissionControlOwners missionControl_;
  /// Front to back.
  std::vector<ListedWindow> windows_;
  PropertyList values_ = PropertyList::Array();
};

}  // namespace vembrix
