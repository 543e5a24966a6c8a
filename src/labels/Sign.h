#pragma once

#include <memory>
#include <string_view>

#include "platform/SignWindow.h"

namespace vembrix {

/// A label: the window that shows a Space's name in the colours of its heat. Move-only; owns its
/// window. Main thread.
class Sign {
 public:
  /// Creates an invisible label that is not on the desktop yet. `frame` is in points, global
  /// coordinates.
  Sign(std::string_view text, const Rect& frame);

  [[nodiscard]] SignWindow& window() { return *window_; }
  [[nodiscard]] const SignWindow& window() const { return *window_; }

  void setText(std::string_view text) { window_->view().setText(text); }

  /// Sets the heat, from 0 to 1, which determines the colours.
  void setHeat(double heat);

  /// Updates font and colours from the settings.
  void prefsChanged();

 private:
  void applyHeat();

  std::unique_ptr<SignWindow> window_;
  double heat_ = 0;
};

/// The behaviour of labels: each is in its own Space, where Mission Control shows it.
inline constexpr std::uint64_t kSignBehavior = Managed | IgnoresCycle | FullScreenAuxiliary;

}  // namespace vembrix
