#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <cstdint>

// What the window server offers about Spaces and no public header declares.
// CoreGraphics exports these names; they are imported weakly, so that a system
// without one of them starts the program all the same: compare the address with
// nullptr before a call. Main thread.

extern "C" {

using CGSConnectionID = std::int32_t;
/// Identifies a Space ("ManagedSpaceID"); 0 is none.
using CGSSpaceID = std::uint64_t;

/// This process's connection to the window server, made on first use; lives as
/// long as the process. The other calls take it.
CGSConnectionID CGSMainConnectionID(void) __attribute__((weak_import));

/// The Spaces of all displays: an array with one dictionary per display. The
/// caller owns the result; null when there is no answer.
CF_RETURNS_RETAINED CFArrayRef CGSCopyManagedDisplaySpaces(CGSConnectionID connection)
    __attribute__((weak_import));

/// The Space that has the user's attention; 0 when there is none.
CGSSpaceID CGSGetActiveSpace(CGSConnectionID connection) __attribute__((weak_import));

/// Makes the Space current on the display with that identifier ("Display
/// Identifier" of the answer above), without animation. Borrows the string.
void CGSManagedDisplaySetCurrentSpace(CGSConnectionID connection, CFStringRef display,
                                      CGSSpaceID space) __attribute__((weak_import));

/// Puts windows of this process into Spaces, besides those in which they are.
/// Borrows both arrays: numbers of windows (CGWindowID) and of Spaces.
void CGSAddWindowsToSpaces(CGSConnectionID connection, CFArrayRef windows, CFArrayRef spaces)
    __attribute__((weak_import));

/// Takes windows of this process out of Spaces. Borrows both arrays, as above.
void CGSRemoveWindowsFromSpaces(CGSConnectionID connection, CFArrayRef windows, CFArrayRef spaces)
    __attribute__((weak_import));

/// The numbers of the Spaces that hold any of the windows, in no certain order. The
/// mask says of which Spaces to tell: 1 the current ones, 2 others, 4 the user's.
/// Borrows the array. The caller owns the result; null when there is no answer.
CF_RETURNS_RETAINED CFArrayRef CGSCopySpacesForWindows(CGSConnectionID connection,
                                                       std::uint32_t mask, CFArrayRef windows)
    __attribute__((weak_import));

}  // extern "C"
