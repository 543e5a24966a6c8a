#pragma once

#include <optional>
#include <span>

#include "platform/PreviewCanvas.h"

namespace vembrix {

struct AppTheme;

/// Writes PNG files of the settings window and the dropdown in every theme, from the command line.
/// Main thread, before the event loop.
class ThemePreviewRenderer {
 public:
  ThemePreviewRenderer() = delete;

  /// Draws the pictures where the arguments hold "--render-theme-previews" and a directory, and
  /// prints each file's path to the standard output. Returns whether they do: then the program is
  /// done. Skips pictures that fail.
  ///
  /// Stores each theme while it draws, which other programs can see, and restores the former one at
  /// the end.
  [[nodiscard]] static bool runIfRequested(std::span<const char* const> arguments);

  /// Returns the dropdown in the theme, which must be the current one; empty where there is no
  /// desktop.
  [[nodiscard]] static std::optional<MenuMock> renderMenuMock(const AppTheme& theme);
};

}  // namespace vembrix
