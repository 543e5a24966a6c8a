#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// The window server's calls about Spaces, under their own names. Main thread.
/// They report no errors: what cannot be answered is null or 0.
class WindowServer {
 public:
  using ConnectionID = std::int32_t;
  using SpaceID = std::uint64_t;
  /// Identifies a window on the desktop; 0 is none.
  using WindowNumber = std::uint32_t;

  static WindowServer& shared();

  virtual ~WindowServer() = default;

  /// This process's connection, for the other calls; valid as long as the process lives.
  [[nodiscard]] virtual ConnectionID CGSMainConnectionID() = 0;

  /// One dictionary per display ("Display Identifier", "Spaces": dictionaries with
  /// "ManagedSpaceID", "id64", "uuid", "type"), unconverted; any entry may be missing or of another
  /// type. Null where the window server gives none. Answers of an unchanged desktop may share their
  /// contents.
  [[nodiscard]] virtual PropertyList CGSCopyManagedDisplaySpaces(ConnectionID connection) = 0;

  /// The active Space; 0 if unknown.
  [[nodiscard]] virtual SpaceID CGSGetActiveSpace(ConnectionID connection) = 0;

  /// Makes the Space current on that display, at once. notification::kActiveSpaceDidChange on the
  /// workspace center reports success.
  virtual void CGSManagedDisplaySetCurrentSpace(ConnectionID connection, std::string_view display,
                                                SpaceID space) = 0;

  /// Returns whether the next two calls work. On a system without one of them every window stays in
  /// the Space where it was created. The answer never changes.
  [[nodiscard]] virtual bool canPlaceWindows() const = 0;

  /// Adds the windows of this process to the Spaces. Unknown windows and Spaces are ignored.
  virtual void CGSAddWindowsToSpaces(ConnectionID connection, std::span<const WindowNumber> windows,
                                     std::span<const SpaceID> spaces) = 0;

  /// Removes the windows of this process from the Spaces.
  virtual void CGSRemoveWindowsFromSpaces(ConnectionID connection,
                                          std::span<const WindowNumber> windows,
                                          std::span<const SpaceID> spaces) = 0;

  /// Mask for CGSCopySpacesForWindows(): current, other and user Spaces.
  static constexpr std::uint32_t allSpaces = 7;

  /// Returns an array of the ids of the Spaces that hold any of the windows, in no particular
  /// order. Empty or null for windows that are unknown or in no Space.
  [[nodiscard]] virtual PropertyList CGSCopySpacesForWindows(
      ConnectionID connection, std::uint32_t mask, std::span<const WindowNumber> windows) = 0;

  /// Options of the window list.
  static constexpr std::uint32_t onScreenOnly = 1;
  static constexpr std::uint32_t excludeDesktopElements = 16;

  /// One dictionary per window, front to back: "kCGWindowOwnerName", and "kCGWindowBounds", a
  /// dictionary with "X", "Y", "Width" and "Height" in points. The owner of Mission Control's
  /// windows is always named "Dock", in every language; its windows known to serve another purpose
  /// have no owner name. Windows smaller than half of a screen may be left out. Null where the
  /// window server gives none.
  [[nodiscard]] virtual PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) = 0;
};

}  // namespace vembrix
