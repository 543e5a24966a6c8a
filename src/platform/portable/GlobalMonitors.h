#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/InputMonitor.h"

namespace vembrix {

/// The monitors of the user's input and their event types. Main thread.
class GlobalMonitors {
 public:
  /// `maskChanged` is called when mask() has changed.
  explicit GlobalMonitors(std::function<void()> maskChanged);

  /// Adds a handler until the token is dropped. The token may outlive this object.
  [[nodiscard]] Token add(std::uint64_t mask, std::function<void()> handler);

  /// Calls the handlers of that type, in the order in which they were added. They may add and end
  /// monitors. Allocates nothing.
  void deliver(EventMask type);

  /// All event types that have a monitor.
  [[nodiscard]] std::uint64_t mask() const { return mask_; }

 private:
  struct Monitor {
    std::uint64_t mask = 0;
    std::function<void()> handler;
    bool ended = false;
  };

  void update();

  std::function<void()> maskChanged_;
  std::vector<std::shared_ptr<Monitor>> monitors_;
  std::uint64_t mask_ = 0;
  /// The number of nested calls of deliver().
  int telling_ = 0;
  /// Lets tokens find this object while it exists.
  std::shared_ptr<GlobalMonitors*> self_;
};

}  // namespace vembrix
