#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <cstdint>

// The window server's calls about Spaces, which CoreGraphics exports and no public header declares.
// Imported weakly, so that the program also starts on a system without one of them: compare the
// address with nullptr before a call. Main thread.

extern "C" {

using CGSConnectionID = std::int32_t;
/// Identifies a Space ("ManagedSpaceID"); 0 is none.
using CGSSpaceID = std::uint64_t;

/// Returns this process's connection to the window server, created on first use; valid for the life
/// of the process.
CGSConnectionID CGSMainConnectionID(void) __attribute__((weak_import));

/// The Spaces of all displays: an array with one dictionary per display. The caller owns the
/// result; null if there is no answer.
CF_RETURNS_RETAINED CFArrayRef CGSCopyManagedDisplaySpaces(CGSConnectionID connection)
    __attribute__((weak_import));

/// Returns the active Space; 0 if there is none.
CGSSpaceID CGSGetActiveSpace(CGSConnectionID connection) __attribute__((weak_import));

/// Makes the Space current on the display with that identifier ("Display
/// Identifier" of the answer above), without animation. Borrows the string.
void CGSManagedDisplaySetCurrentSpace(CGSConnectionID connection, CFStringRef display,
                                      CGSSpaceID space) __attribute__((weak_import));

/// Adds windows of this process to Spaces. Borrows both arrays: numbers of windows (CGWindowID) and
/// of Spaces.
void CGSAddWindowsToSpaces(CGSConnectionID connection, CFArrayRef windows, CFArrayRef spaces)
    __attribute__((weak_import));

/// Removes windows of this process from Spaces. Borrows both arrays, as above.
void CGSRemoveWindowsFromSpaces(CGSConnectionID connection, CFArrayRef windows, CFArrayRef spaces)
    __attribute__((weak_import));

/// Returns the numbers of the Spaces that hold any of the windows, in no particular order. `mask`
/// selects the Spaces: 1 current, 2 others, 4 the user's. Borrows the array. The caller owns the
/// result; null if there is no answer.
CF_RETURNS_RETAINED CFArrayRef CGSCopySpacesForWindows(CGSConnectionID connection,
                                                       std::uint32_t mask, CFArrayRef windows)
    __attribute__((weak_import));

}  // extern "C"
