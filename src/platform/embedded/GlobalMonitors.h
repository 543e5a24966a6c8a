#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/InputMonitor.h"

namespace vembrix {

/// Who watches the user's input, and which types of it. Main thread.
class GlobalMonitors {
 public:
  /// `maskChanged` is called when mask() has become another one.
  explicit GlobalMonitors(std::function<void()> maskChanged);

  /// The handler is called until the token is dropped, which may be after the
  /// end of this.
  [[nodiscard]] Token add(std::uint64_t mask, std::function<void()> handler);

  /// Calls the handlers of that type, in the order of their coming. They may add
  /// and end monitors. Allocates nothing.
  void tell(EventMask type);

  /// All types that somebody watches.
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
  /// How many calls of tell() are under way, one within the other.
  int telling_ = 0;
  /// Tokens find this by it, until it ends.
  std::shared_ptr<GlobalMonitors*> self_;
};

}  // namespace vembrix
