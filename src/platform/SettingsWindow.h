#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/SettingsForm.h"

namespace vembrix {

/// The height in points of the title bar that content of full size reaches under. Where the system
/// lets no content reach there, as much of the content's top is left out.
inline constexpr double kTitleBarHeight = 28;

/// The window's frame around the content.
struct WindowChrome {
  /// Empty to follow the system.
  std::optional<Appearance> appearance;
  /// The content reaches up under the title bar.
  bool hasFullSizeContent = false;
  bool hasTransparentTitleBar = false;
  bool showsTitle = true;
  /// May be clear (alpha 0), where the backdrop is translucent.
  Color background = Color(SystemColor::WindowBackground);

  bool operator==(const WindowChrome&) const = default;
};

/// The system's translucent materials, blended with what is behind the window and always drawn as
/// in an active one. A system without them shows groundOf() instead.
enum class Material { Sidebar };

/// Returns the average colour of a material.
constexpr Srgb groundOf(Material material, Appearance appearance) {
  switch (material) {
    case Material::Sidebar:
      break;
  }
  return appearance == Appearance::Dark ? Srgb{0.16, 0.16, 0.17} : Srgb{0.93, 0.93, 0.94};
}

/// A linear gradient from the top to the bottom; may have no colours.
struct GradientBackdrop {
  std::vector<Color> colors;
  bool operator==(const GradientBackdrop&) const = default;
};

/// The background of the whole root; monostate for none.
using Backdrop = std::variant<std::monostate, Color, GradientBackdrop, Material>;

/// Dimensions of themed tab buttons, in points.
namespace tab_button_metrics {
/// Added to the width of a system button of the same text where the layout states no width.
inline constexpr double kExtraWidth = 20;
inline constexpr double kHeight = 26;
/// The underline's distances from both sides and from the bottom edge.
inline constexpr double kUnderlineInset = 10;
inline constexpr double kUnderlineBottom = 1;
inline constexpr double kUnderlineHeight = 2;
}  // namespace tab_button_metrics

/// The look of a themed tab button.
struct TabButton {
  enum class Alignment { Leading, Center };

  std::string text;
  TextStyle style;
  Alignment alignment = Alignment::Center;
  /// The distance from the leading edge to a text with leading alignment.
  double indent = 0;
  /// The colour of the whole button behind the text; empty for none.
  std::optional<Color> background;
  /// The background's.
  double cornerRadius = 0;
  /// The colour of the line under the text; empty for none. The line keeps kUnderlineInset from
  /// both sides of the button's own width.
  std::optional<Color> underline;
  /// Reported to assistive programs, too.
  bool isSelected = false;

  bool operator==(const TabButton&) const = default;
};

/// Distances inwards from the root's edges.
struct Insets {
  double top = 0;
  double leading = 0;
  double bottom = 0;
  double trailing = 0;

  bool operator==(const Insets&) const = default;
};

/// The layout of tab buttons and page in the root, in points from its top and leading edges.
struct NavigationLayout {
  enum class Axis { Horizontal, Vertical };
  struct Separator {
    double leading = 0;
    double width = 1;
    Color color = Color(SystemColor::Separator);
    bool operator==(const Separator&) const = default;
  };

  /// The direction of the row of buttons.
  Axis axis = Axis::Horizontal;
  /// The gap between two buttons.
  double spacing = 0;
  double top = 0;
  /// Empty to centre the buttons in the root.
  std::optional<double> leading;
  /// The width of every button; empty for each button's own.
  std::optional<double> buttonWidth;
  /// A line over the root's whole height.
  std::optional<Separator> separator;
  /// The insets of the page or its card.
  Insets content;

  bool operator==(const NavigationLayout&) const = default;
};

/// A rounded background that a page fills and is clipped to.
struct Card {
  static constexpr double strokeWidth = 1;

  std::optional<Color> fill;
  /// The colour of a line inside the edge, over the fill.
  std::optional<Color> stroke;
  double cornerRadius = 0;

  bool operator==(const Card&) const = default;
};

/// A page and its tab in the system's own tab view.
struct SettingsTab {
  std::string identifier;
  std::string label;
  SettingsForm form;
};

/// The system's own tab view over the window's own background.
struct PlainContent {
  Size size;
  /// The margin of the tab view on all sides, in points.
  double inset = 0;
  std::vector<SettingsTab> tabs;
  /// An index into `tabs`.
  std::size_t selected = 0;
};

/// The page of one tab and the buttons that lead to the others.
struct ThemedPage {
  /// One per tab, in their order.
  std::vector<TabButton> buttons;
  SettingsTab tab;
};

/// Tabs in a look of the program's own.
struct ThemedContent {
  /// The root's size before the window lays it out.
  Size rootSize;
  Backdrop backdrop;
  NavigationLayout navigation;
  /// Empty for a page without a card.
  std::optional<Card> card;
  ThemedPage page;
};

/// All that a settings window shows.
struct SettingsContent {
  WindowChrome chrome;
  std::variant<PlainContent, ThemedContent> body;

  /// Before the window lays it out; with what reaches under the title bar.
  [[nodiscard]] Size size() const {
    const auto* themed = std::get_if<ThemedContent>(&body);
    return themed ? themed->rootSize : std::get<PlainContent>(body).size;
  }
};

/// Face: the settings window. Not on the screen before show(); the user closes it with its close
/// button, with Escape, or with the system's key for closing a window, and it can be shown again.
/// Every control has an accessible name (the stated one, else its title) and is reachable with the
/// Tab key where the system's settings allow it. Main thread.
class SettingsWindow {
 public:
  /// Creates a window in the middle of the screen that can be closed, but neither resized nor
  /// minimised. `contentSize` is in points and excludes the title bar.
  static std::unique_ptr<SettingsWindow> create(Size contentSize, std::string_view title);

  virtual ~SettingsWindow() = default;

  /// Sets what is called with the index of a clicked themed tab button, the selected one included.
  /// The handler may set the content.
  virtual void setTabClickHandler(std::function<void(int index)> handler) = 0;

  /// Replaces the content. May be called from a closure of the old content: the calling control and
  /// its closure live until the closure returns.
  virtual void setContent(SettingsContent content) = 0;

  /// Replaces the page and the look of the buttons; keeps all else, the keyboard focus on a button
  /// included. Needs themed content with the same number of buttons. May be called from the tab
  /// click handler.
  virtual void setPage(ThemedPage page) = 0;

  /// Changes the text of a status label; an unknown id is ignored.
  virtual void setStatus(const ControlID& id, std::string_view text) = 0;
  /// Enables or disables a button; an unknown id is ignored.
  virtual void setEnabled(const ControlID& id, bool isEnabled) = 0;

  /// Shows the window in front of the program's others and gives it the keyboard. Does not activate
  /// the application.
  virtual void show() = 0;
};

}  // namespace vembrix
