#pragma once

#include "platform/Screens.h"

namespace vembrix {

/// Where labels and the tour's overlay stand: the main screen, else the first one.
/// Ends the program where there is none, which no running desktop is without. Valid
/// until the next event. Main thread.
const Screen& signScreen();

/// A rectangle of that size in the middle of the other.
constexpr Rect centered(const Size& size, const Rect& rect) {
  return {rect.x + rect.width / 2 - size.width / 2, rect.y + rect.height / 2 - size.height / 2,
          size.width, size.height};
}

}  // namespace vembrix
