#pragma once

#include <memory>
#include <optional>

#include "platform/Color.h"

namespace vembrix {

/// Face: the menu that a status item drops down. Main thread.
class DropdownMenu {
 public:
  static std::unique_ptr<DropdownMenu> create();

  virtual ~DropdownMenu() = default;

  /// Nothing follows the system.
  virtual void setAppearance(std::optional<Appearance> appearance) = 0;
};

}  // namespace vembrix
