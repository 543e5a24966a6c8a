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

  /// This process's connection, for the other calls; lives as long as it.
  [[nodiscard]] virtual ConnectionID CGSMainConnectionID() = 0;

  /// One dictionary per display ("Display Identifier", "Spaces": dictionaries
  /// with "ManagedSpaceID", "id64", "uuid", "type"), as the window server gives
  /// it; any entry may be missing or of another type. Null where it gives none.
  /// Answers of an unchanged desktop may share their contents.
  [[nodiscard]] virtual PropertyList CGSCopyManagedDisplaySpaces(ConnectionID connection) = 0;

  /// The Space that has the user's attention; 0 when unknown.
  [[nodiscard]] virtual SpaceID CGSGetActiveSpace(ConnectionID connection) = 0;

  /// Makes the Space current on that display, at once. Whether it happened is
  /// told by notification::kActiveSpaceDidChange on the workspace center.
  virtual void CGSManagedDisplaySetCurrentSpace(ConnectionID connection, std::string_view display,
                                                SpaceID space) = 0;

  /// Whether the next two calls move windows. A system that has lost one of them
  /// leaves every window where it was born; the answer never changes.
  [[nodiscard]] virtual bool canPlaceWindows() const = 0;

  /// Puts the windows of this process into the Spaces, besides those in which they
  /// are. Unknown windows and Spaces are ignored.
  virtual void CGSAddWindowsToSpaces(ConnectionID connection, std::span<const WindowNumber> windows,
                                     std::span<const SpaceID> spaces) = 0;

  /// Takes the windows of this process out of the Spaces.
  virtual void CGSRemoveWindowsFromSpaces(ConnectionID connection,
                                          std::span<const WindowNumber> windows,
                                          std::span<const SpaceID> spaces) = 0;

  /// Which Spaces CGSCopySpacesForWindows() tells of: the current one, others, the
  /// user's.
  static constexpr std::uint32_t allSpaces = 7;

  /// An array of the ids of the Spaces that hold any of the windows, in no certain
  /// order. Empty or null for windows that are in none, or unknown.
  [[nodiscard]] virtual PropertyList CGSCopySpacesForWindows(
      ConnectionID connection, std::uint32_t mask, std::span<const WindowNumber> windows) = 0;

  /// Options of the window list.
  static constexpr std::uint32_t onScreenOnly = 1;
  static constexpr std::uint32_t excludeDesktopElements = 16;

  /// One dictionary per window, front to back, as the window server gives it:
  /// "kCGWindowOwnerName", and "kCGWindowBounds", a dictionary with "X", "Y",
  /// "Width" and "Height" in points. The program that shows Mission Control is called
  /// "Dock", whichever it is and in every language; a window that it is known to have for
  /// other purposes has no owner name. Windows smaller than half of a screen may be left
  /// out. Null where it gives none.
  [[nodiscard]] virtual PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) = 0;
};

}  // namespace vembrix
