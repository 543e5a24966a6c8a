#pragma once

#include "platform/DropdownMenu.h"

namespace vembrix {

/// A menu that keeps what it was told.
class RecordingDropdownMenu : public DropdownMenu {
 public:
  void setAppearance(std::optional<Appearance> appearance) override { appearance_ = appearance; }

  std::optional<Appearance> appearance() const { return appearance_; }

 private:
  std::optional<Appearance> appearance_;
};

}  // namespace vembrix
