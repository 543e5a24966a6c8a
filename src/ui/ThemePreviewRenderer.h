#pragma once

#include <optional>
#include <span>

#include "platform/PreviewCanvas.h"

namespace vembrix {

struct AppTheme;

/// Pictures of every theme as PNG files, from the command line: the settings window
/// and the dropdown, so that the themes can be looked at without clicking through them.
/// Main thread, before the event loop.
class ThemePreviewRenderer {
 public:
  ThemePreviewRenderer() = delete;

  /// Draws the pictures where the arguments ask for it by "--render-theme-previews" and a
  /// directory, and writes each file's path to the standard output. Whether it did: then
  /// the program is done. What goes wrong on the way is skipped.
  ///
  /// Other programs see the themes come and go while it runs; afterwards the stored theme
  /// is again what it was.
  [[nodiscard]] static bool runIfRequested(std::span<const char* const> arguments);

  /// The dropdown in the theme, which must be the current one; nothing where there is no
  /// desktop.
  [[nodiscard]] static std::optional<MenuMock> renderMenuMock(const AppTheme& theme);
};

}  // namespace vembrix
