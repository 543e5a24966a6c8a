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

/// A picture of the dropdown. Points, origin at the picture's bottom left.
struct MenuMock {
  struct Row {
    /// Stands for itself: it is drawn as it is.
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
  /// Of the background; outside there is nothing.
  double cornerRadius = 0;
  /// In which the rows are drawn.
  Appearance appearance = Appearance::Light;
  /// From the top to the bottom.
  std::vector<Row> rows;
  std::vector<Separator> separators;
  std::vector<Label> labels;
};

/// Face: draws what Vembrix shows into pictures, off the screen. The pictures are as
/// large as the content, in pixels of the main screen's scale; the same content gives
/// the same bytes. Main thread.
class PreviewCanvas {
 public:
  static PreviewCanvas& shared();

  virtual ~PreviewCanvas() = default;

  /// The settings window's content, without its title bar, as a PNG file's bytes;
  /// nothing when it cannot be drawn. Content of full size is drawn whole.
  [[nodiscard]] virtual std::optional<std::string> draw(SettingsContent content) = 0;

  /// The same for the dropdown.
  [[nodiscard]] virtual std::optional<std::string> draw(MenuMock mock) = 0;
};

}  // namespace vembrix
