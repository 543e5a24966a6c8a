#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"

namespace vembrix {

/// A built-in visual style of the settings window and the dropdown. A value; only the name of the
/// chosen one is stored.
struct AppTheme {
  /// The window's backdrop.
  struct Solid {
    Color color;
    bool operator==(const Solid&) const = default;
  };
  /// A linear gradient through the colours, the first at the top.
  struct Gradient {
    std::vector<Color> colors;
    bool operator==(const Gradient&) const = default;
  };
  /// The system's translucent materials.
  enum class Material { Sidebar };
  struct Vibrancy {
    Material material = Material::Sidebar;
    bool operator==(const Vibrancy&) const = default;
  };
  /// The system's own window background; no backdrop.
  struct Standard {
    bool operator==(const Standard&) const = default;
  };
  using Background = std::variant<Solid, Gradient, Vibrancy, Standard>;

  /// The presentation of the tabs in the settings window.
  enum class Navigation {
    /// A centred row of rounded buttons above the content.
    Pills,
    /// A vertical list of buttons at the left.
    Sidebar,
    /// A centred row of texts, the selected one underlined.
    Underline,
  };

  /// Shown to the user and stored; unique.
  std::string name;
  /// One sentence for the theme picker.
  std::string blurb;
  /// Forces dark or light; empty to follow the system.
  std::optional<bool> isDark;
  Background background;
  /// Selected tab, links, focus marks.
  Color accent;
  /// The fill of the card that holds a tab's content; empty for no card.
  std::optional<Color> cardFill;
  std::optional<Color> cardStroke;
  /// The corner radius of cards and tab buttons, in points.
  double cornerRadius = 0;
  bool usesMonoFont = false;
  Navigation navigation = Navigation::Pills;

  /// The forced appearance; empty to follow the system.
  [[nodiscard]] std::optional<Appearance> appearance() const;
  /// Returns the theme's font in points; without a size, that of the system's menus and controls.
  [[nodiscard]] Font font(Font::Weight weight = Font::Weight::Regular,
                          std::optional<double> size = {}) const;

  /// Returns whether the theme is the system's own look; depends on its name alone.
  [[nodiscard]] bool isPlain() const { return name == stock().name; }

  bool operator==(const AppTheme&) const = default;

  /// The seven themes, in display order.
  static const std::vector<AppTheme>& all();
  /// The plain system look, which is the first of them.
  static const AppTheme& stock();
};

}  // namespace vembrix
