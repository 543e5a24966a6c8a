#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/SettingsWindow.h"
#include "platform/SpaceRowView.h"

namespace vembrix {

/// A mock-up of the dropdown for the preview pictures, not a test double. In points, origin at its
/// bottom left.
struct MenuMock {
  struct Row {
    /// Drawn in its present state.
    std::unique_ptr<SpaceRowView> view;
    Rect frame;
  };
  struct Separator {
    Rect frame;
    Srgb color;
    bool operator==(const Separator&) const = default;
  };
  struct Label {
    Rect frame;
    std::string text;
    Font font;
    Srgb color;
    bool operator==(const Label&) const = default;
  };

  Size size;
  Srgb background;
  /// The background's; the picture is transparent outside of it.
  double cornerRadius = 0;
  /// The appearance of the rows.
  Appearance appearance = Appearance::Light;
  /// From the top to the bottom.
  std::vector<Row> rows;
  std::vector<Separator> separators;
  std::vector<Label> labels;
};

/// Face: draws what Vembrix shows into pictures, off the screen. A picture has the content's size
/// at the main screen's scale; equal content gives equal bytes. Main thread.
class PreviewCanvas {
 public:
  static PreviewCanvas& shared();

  virtual ~PreviewCanvas() = default;

  /// Draws the settings window's content without the title bar, or the whole content where it has
  /// full size. Returns the bytes of a PNG file; empty when drawing fails.
  [[nodiscard]] virtual std::optional<std::string> draw(SettingsContent content) = 0;

  /// Draws the dropdown; returns as above.
  [[nodiscard]] virtual std::optional<std::string> draw(MenuMock mock) = 0;
};

}  // namespace vembrix
