#import "platform/macos/WindowList.h"

#import <AppKit/AppKit.h>

#include <cstddef>
#include <utility>

#import "platform/macos/Conversions.h"
#import "platform/macos/SystemVersion.h"

namespace vembrix {
namespace {

/// Not with isEqual:, by which a Boolean equals a number.
bool isSame(id a, id b) {
  return a == b || (a && b && CFEqual((__bridge CFTypeRef)a, (__bridge CFTypeRef)b));
}

bool isInLayer(NSDictionary* window, int layer) {
  id value = window[(__bridge NSString*)kCGWindowLayer];
  return [value isKindOfClass:[NSNumber class]] && [value intValue] == layer;
}

}  // namespace

bool MissionControlOwners::owns(NSDictionary* window) {
  /// One below the Dock's own; in other layers WindowManager has windows at any time.
  constexpr int kMissionControlLayer = 19;
  id process = window[(__bridge NSString*)kCGWindowOwnerPID];
  if (![process isKindOfClass:[NSNumber class]]) return false;
  switch (programOf([process intValue])) {
    case Program::Dock:
      return true;
    case Program::WindowManager:
      return isAtLeast(SystemRelease::GoldenGate) && isInLayer(window, kMissionControlLayer);
    case Program::Other:
      break;
  }
  return false;
}

MissionControlOwners::Program MissionControlOwners::programOf(pid_t process) {
  // The numbers of processes that have ended are given to others, now and then.
  constexpr std::size_t kMostProcesses = 256;
  if (programs_.size() >= kMostProcesses) programs_.clear();
  const auto [entry, isNew] = programs_.try_emplace(process, Program::Other);
  if (isNew) entry->second = find(process);
  return entry->second;
}

MissionControlOwners::Program MissionControlOwners::find(pid_t process) {
  NSString* identifier =
      [NSRunningApplication runningApplicationWithProcessIdentifier:process].bundleIdentifier;
  if ([identifier isEqualToString:@"com.apple.dock"]) return Program::Dock;
  if ([identifier isEqualToString:@"com.apple.WindowManager"]) return Program::WindowManager;
  return Program::Other;
}

bool ListedWindow::update(id window, MissionControlOwners& missionControl) {
  if (![window isKindOfClass:[NSDictionary class]]) {
    *this = {};
    value_ = propertyListFrom(window);
    return true;
  }
  NSDictionary* entries = window;
  id number = entries[(__bridge NSString*)kCGWindowNumber];
  id owner = entries[(__bridge NSString*)kCGWindowOwnerName];
  id bounds = entries[(__bridge NSString*)kCGWindowBounds];
  if (value_.asDictionary() && isSame(number, number_) && isSame(owner, owner_) &&
      isSame(bounds, bounds_)) {
    return false;
  }
  number_ = number;
  owner_ = owner;
  bounds_ = bounds;
  PropertyList::Dictionary value;
  if (missionControl.owns(entries)) {
    value.emplace("kCGWindowOwnerName", "Dock");
  } else if (owner) {
    value.emplace("kCGWindowOwnerName", propertyListFrom(owner));
  }
  if (bounds) value.emplace("kCGWindowBounds", propertyListFrom(bounds));
  value_ = PropertyList(std::move(value));
  return true;
}

PropertyList WindowList::read(NSArray* windows) {
  bool isChanged = windows.count != windows_.size();
  windows_.resize(windows.count);
  std::size_t place = 0;
  for (id window in windows) {
    isChanged |= windows_[place++].update(window, missionControl_);
  }
  if (isChanged) {
    PropertyList::Array values;
    values.reserve(windows_.size());
    for (const ListedWindow& window : windows_) values.push_back(window.value());
    values_ = PropertyList(std::move(values));
  }
  return values_;
}

}  // namespace vembrix
