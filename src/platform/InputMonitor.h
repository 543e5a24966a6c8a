#pragma once

#include <cstdint>
#include <functional>

#include "platform/Geometry.h"
#include "platform/Token.h"

namespace vembrix {

/// Bits of event types, as event monitors take them.
enum EventMask : std::uint64_t {
  LeftMouseDown = 1U << 1U,
  RightMouseDown = 1U << 3U,
  MouseMoved = 1U << 5U,
  KeyDown = 1U << 10U,
  OtherMouseDown = 1U << 25U,
};

/// Observes the user's input. Main thread.
class InputMonitor {
 public:
  static InputMonitor& shared();

  virtual ~InputMonitor() = default;

  /// Calls the handler, on the main thread, for every event of the masked types that goes to
  /// another program, until the token is dropped. The handler does not learn what is typed or
  /// clicked. Key presses need the permission for Accessibility. The token is empty where the
  /// system gives no monitor.
  [[nodiscard]] virtual Token addGlobalMonitor(std::uint64_t mask,
                                               std::function<void()> handler) = 0;

  /// The pointer's position in points, global coordinates.
  [[nodiscard]] virtual Point mouseLocation() const = 0;
};

}  // namespace vembrix
