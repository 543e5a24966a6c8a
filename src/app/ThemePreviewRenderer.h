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

  /// If the arguments hold "--render-theme-previews" and a directory, draws the pictures, prints
  /// each
  /// file's path to the standard output and returns true: then the program is done. Skips pictures
  /// that fail.
  ///
  /// Stores each theme while it draws, which other programs can see, and restores the former one at
  /// the end.
  [[nodiscard]] static bool runIfRequested(std::span<const char* const> arguments);

  /// Returns the dropdown in the theme, which must be the current one; empty if there is no
  /// desktop.
  [[nodiscard]] static std::optional<MenuMock> renderMenuMock(const AppTheme& theme);
};

}  // namespace vembrix
