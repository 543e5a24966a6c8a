#pragma once

#include "platform/Screens.h"

namespace vembrix {

/// Returns the screen of labels and the tour's overlay: the main screen, else the first one. Ends
/// the program where there is none, as a running desktop always has one. Valid until the next
/// event. Main thread.
const Screen& signScreen();

/// Returns a rectangle of that size, centred in `rect`.
constexpr Rect centered(const Size& size, const Rect& rect) {
  return {rect.x + rect.width / 2 - size.width / 2, rect.y + rect.height / 2 - size.height / 2,
          size.width, size.height};
}

}  // namespace vembrix
