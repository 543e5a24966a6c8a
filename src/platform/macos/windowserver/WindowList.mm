#import "platform/macos/windowserver/WindowList.h"

#import <AppKit/AppKit.h>

#include <cstddef>
#include <utility>

#import "platform/macos/support/Conversions.h"
#import "platform/macos/support/SystemVersion.h"

namespace vembrix {
namespace {

/// Compares without isEqual:, for which a Boolean equals a number.
bool isSame(id a, id b) {
  return a == b || (a && b && CFEqual((__bridge CFTypeRef)a, (__bridge CFTypeRef)b));
}

std::optional<std::int64_t> integerFrom(id value) {
  if (![value isKindOfClass:[NSNumber class]]) return std::nullopt;
  return [value longLongValue];
}

/// Identifies the program by its identifier, because names are translated.
std::optional<OverviewProgram> programOf(std::int64_t process) {
  NSRunningApplication* application =
      [NSRunningApplication runningApplicationWithProcessIdentifier:static_cast<pid_t>(process)];
  if (!application) return std::nullopt;
  NSString* identifier = application.bundleIdentifier;
  if ([identifier isEqualToString:@"com.apple.dock"]) return OverviewProgram::Dock;
  if ([identifier isEqualToString:@"com.apple.WindowManager"]) {
    return OverviewProgram::WindowManager;
  }
  return OverviewProgram::Other;
}

MissionControlWindows::ShownBy shownBy() {
  return isAtLeast(SystemRelease::GoldenGate) ? MissionControlWindows::ShownBy::DockOrWindowManager
                                              : MissionControlWindows::ShownBy::Dock;
}

}  // namespace

void ListedWindow::update(id window) {
  if (![window isKindOfClass:[NSDictionary class]]) {
    if (isSame(oddity_, window)) return;
    *this = {};
    oddity_ = window;
    return;
  }
  NSDictionary* entries = window;
  id number = entries[(__bridge NSString*)kCGWindowNumber];
  id owner = entries[(__bridge NSString*)kCGWindowOwnerName];
  id bounds = entries[(__bridge NSString*)kCGWindowBounds];
  if (ownerName_ && !oddity_ && isSame(number, number_) && isSame(owner, owner_) &&
      isSame(bounds, bounds_)) {
    return;
  }
  oddity_ = nil;
  number_ = number;
  owner_ = owner;
  bounds_ = bounds;
  ownerName_.reset();
  process_ = integerFrom(entries[(__bridge NSString*)kCGWindowOwnerPID]);
  CGRect rect = CGRectZero;
  if ([bounds isKindOfClass:[NSDictionary class]]) {
    CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)bounds, &rect);
  }
  overview_ = {.number = integerFrom(number).value_or(0),
               .layer = integerFrom(entries[(__bridge NSString*)kCGWindowLayer]).value_or(0),
               .size = {rect.size.width, rect.size.height}};
}

std::optional<MissionControlWindows::Window> ListedWindow::overview(
    OverviewPrograms& programs) const {
  if (!process_) return std::nullopt;
  MissionControlWindows::Window overview = overview_;
  overview.program = programs.of(*process_);
  return overview;
}

bool ListedWindow::describe(OwnerName ownerName) {
  if (ownerName_ == ownerName) return false;
  ownerName_ = ownerName;
  if (oddity_) {
    value_ = propertyListFrom(oddity_);
    return true;
  }
  PropertyList::Dictionary value;
  if (ownerName == OwnerName::Dock) {
    value.emplace("kCGWindowOwnerName", "Dock");
  } else if (ownerName == OwnerName::Own && owner_) {
    value.emplace("kCGWindowOwnerName", propertyListFrom(owner_));
  }
  if (bounds_) value.emplace("kCGWindowBounds", propertyListFrom(bounds_));
  value_ = PropertyList(std::move(value));
  return true;
}

WindowList::WindowList()
    : programs_(programOf),
      missionControl_(shownBy()),
      activeSpace_(NotificationCenter::workspace().addObserver(
          notification::kActiveSpaceDidChange,
          [this] { missionControl_.activeSpaceDidChange(); })) {}

PropertyList WindowList::read(NSArray* windows) {
  programs_.beginReading();
  bool isChanged = windows.count != windows_.size();
  windows_.resize(windows.count);
  overviews_.clear();
  candidates_.clear();
  std::size_t place = 0;
  for (id window in windows) {
    ListedWindow& listed = windows_[place++];
    listed.update(window);
    const auto& overview = overviews_.emplace_back(listed.overview(programs_));
    if (overview && overview->program != OverviewProgram::Other) candidates_.push_back(*overview);
  }
  missionControl_.read(candidates_);
  for (place = 0; place < windows_.size(); ++place) {
    isChanged |= windows_[place].describe(ownerNameOf(overviews_[place]));
  }
  if (isChanged) {
    PropertyList::Array values;
    values.reserve(windows_.size());
    for (const ListedWindow& window : windows_) values.push_back(window.value());
    values_ = PropertyList(std::move(values));
  }
  return values_;
}

ListedWindow::OwnerName WindowList::ownerNameOf(
    const std::optional<MissionControlWindows::Window>& window) const {
  if (!window) return ListedWindow::OwnerName::Own;
  if (missionControl_.contain(*window)) return ListedWindow::OwnerName::Dock;
  return window->program == OverviewProgram::Dock ? ListedWindow::OwnerName::None
                                                  : ListedWindow::OwnerName::Own;
}

}  // namespace vembrix
