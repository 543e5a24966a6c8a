#pragma once

#include <memory>
#include <string_view>

#include "platform/SignWindow.h"

namespace vembrix {

/// A label: the window that shows a Space's name in the colours of its heat. A value
/// that can be moved; its window goes with it. Main thread.
class Sign {
 public:
  /// Invisible, and not on the desktop yet. `frame`: points, global coordinates.
  Sign(std::string_view text, const Rect& frame);

  [[nodiscard]] SignWindow& window() { return *window_; }
  [[nodiscard]] const SignWindow& window() const { return *window_; }

  void setText(std::string_view text) { window_->view().setText(text); }

  /// From 0 to 1; the colours follow.
  void setHeat(double heat);

  /// Font and colours follow the settings.
  void prefsChanged();

 private:
  void applyHeat();

  std::unique_ptr<SignWindow> window_;
  double heat_ = 0;
};

/// How a label goes along with Spaces: it stands in its own, and Mission Control shows
/// it there.
inline constexpr std::uint64_t kSignBehavior = Managed | IgnoresCycle | FullScreenAuxiliary;

}  // namespace vembrix
