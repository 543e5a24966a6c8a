#pragma once

#include <xcb/xcb.h>

namespace vembrix {

/// Returns an event as the type that its code stands for. `Generic` is one of xcb's types for any
/// event.
template <typename Event, typename Generic>
const Event& as(const Generic& event) {
  return reinterpret_cast<const Event&>(event);
}

}  // namespace vembrix
