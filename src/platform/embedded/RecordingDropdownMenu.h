#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "platform/DropdownMenu.h"

namespace vembrix {

/// A menu that keeps what it was told.
class RecordingDropdownMenu : public DropdownMenu {
 public:
  void setNeedsUpdateHandler(std::function<void()> handler) override {
    needsUpdate_ = std::move(handler);
  }
  void setAppearance(std::optional<Appearance> appearance) override { appearance_ = appearance; }
  void setItems(std::vector<MenuItem> items) override { items_ = std::move(items); }

  std::optional<Appearance> appearance() const { return appearance_; }
  const std::vector<MenuItem>& items() const { return items_; }

 private:
  std::function<void()> needsUpdate_;
  std::optional<Appearance> appearance_;
  std::vector<MenuItem> items_;
};

}  // namespace vembrix
