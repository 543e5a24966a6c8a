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

/// What the system puts around the content.
struct WindowChrome {
  /// Nothing follows the system.
  std::optional<Appearance> appearance;
  /// The content reaches up under the title bar.
  bool hasFullSizeContent = false;
  bool hasTransparentTitleBar = false;
  bool showsTitle = true;
  /// May be clear (alpha 0), where the backdrop is translucent.
  Color background = Color(SystemColor::WindowBackground);

  bool operator==(const WindowChrome&) const = default;
};

/// The system's translucent grounds. Always as in an active window, mixed with
/// what is behind the window; a system that has none shows groundOf() instead.
enum class Material { Sidebar };

/// What a material looks like on average.
constexpr Srgb groundOf(Material material, Appearance appearance) {
  switch (material) {
    case Material::Sidebar:
      break;
  }
  return appearance == Appearance::Dark ? Srgb{0.16, 0.16, 0.17} : Srgb{0.93, 0.93, 0.94};
}

/// A linear wash from the top to the bottom; may be empty.
struct GradientBackdrop {
  std::vector<Color> colors;
  bool operator==(const GradientBackdrop&) const = default;
};

/// Over the whole root, behind everything else; monostate for none.
using Backdrop = std::variant<std::monostate, Color, GradientBackdrop, Material>;

/// Of all themed tab buttons, in points.
namespace tab_button_metrics {
/// A button is this much wider than a system button of the same text, where its
/// layout states no width.
inline constexpr double kExtraWidth = 20;
inline constexpr double kHeight = 26;
/// The underline: at that distance from both sides, over the bottom edge.
inline constexpr double kUnderlineInset = 10;
inline constexpr double kUnderlineBottom = 1;
inline constexpr double kUnderlineHeight = 2;
}  // namespace tab_button_metrics

/// A themed tab button as it looks now.
struct TabButton {
  enum class Alignment { Leading, Center };

  std::string text;
  TextStyle style;
  Alignment alignment = Alignment::Center;
  /// From the button's leading edge to a leading text.
  double indent = 0;
  /// Behind the text, over the whole button; nothing for none.
  std::optional<Color> background;
  /// Of the background.
  double cornerRadius = 0;
  /// The colour of the line under the text; nothing for none. It is as wide as
  /// the button's own width less kUnderlineInset on both sides.
  std::optional<Color> underline;
  /// Also told to assistive programs.
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

/// Where the tab buttons and the page stand in the root. Points; distances from
/// the root's top and leading edges.
struct NavigationLayout {
  enum class Axis { Horizontal, Vertical };
  struct Separator {
    double leading = 0;
    double width = 1;
    Color color = Color(SystemColor::Separator);
    bool operator==(const Separator&) const = default;
  };

  /// The way in which the buttons follow each other.
  Axis axis = Axis::Horizontal;
  /// Between two buttons.
  double spacing = 0;
  double top = 0;
  /// Nothing: the row of buttons is centred in the root.
  std::optional<double> leading;
  /// Of every button; nothing for each one's own.
  std::optional<double> buttonWidth;
  /// A line over the root's whole height.
  std::optional<Separator> separator;
  /// Of the box that holds the page, or its card.
  Insets content;

  bool operator==(const NavigationLayout&) const = default;
};

/// A rounded ground under a page, which fills it to the edges and is clipped
/// by it.
struct Card {
  static constexpr double strokeWidth = 1;

  std::optional<Color> fill;
  /// Inside the edge, over the fill.
  std::optional<Color> stroke;
  double cornerRadius = 0;

  bool operator==(const Card&) const = default;
};

/// A page and what the system's own tab view calls it.
struct SettingsTab {
  std::string identifier;
  std::string label;
  SettingsForm form;
};

/// The system's own tab view over the window's own background.
struct PlainContent {
  Size size;
  /// From the content's edges to the tab view, on all sides, in points.
  double inset = 0;
  std::vector<SettingsTab> tabs;
  /// A place in `tabs`.
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
  /// Of the root before the window lays it out.
  Size rootSize;
  Backdrop backdrop;
  NavigationLayout navigation;
  /// Nothing: the page stands there without.
  std::optional<Card> card;
  ThemedPage page;
};

/// All that a settings window shows.
struct SettingsContent {
  WindowChrome chrome;
  std::variant<PlainContent, ThemedContent> body;
};

/// Face: the settings window. Not on the screen before show(); the user closes
/// it with its close button, with Escape, or with the system's key for closing a
/// window, and it can be shown again. All controls are reached with the Tab key
/// (where the system has it so) and have accessible names: the stated one, else
/// their title. Main thread.
class SettingsWindow {
 public:
  /// A window with a title bar that can be closed, but neither resized nor
  /// minimised, in the middle of the screen. `contentSize` is without the title
  /// bar, in points.
  static std::unique_ptr<SettingsWindow> create(Size contentSize, std::string_view title);

  virtual ~SettingsWindow() = default;

  /// Called with the place, from 0, of a themed tab button that was clicked, the
  /// selected one included. It may set the content.
  virtual void setTabClickHandler(std::function<void(int index)> handler) = 0;

  /// In place of all that was there. May be called from within a closure of the
  /// content that it replaces: the control that called, and its closure, live
  /// until that has returned.
  virtual void setContent(SettingsContent content) = 0;

  /// Another page in place of the one shown, and the buttons as they look now;
  /// all else stays, the keyboard focus on a button included. Only with themed
  /// content of as many buttons. May be called from within the tab click
  /// handler.
  virtual void setPage(ThemedPage page) = 0;

  /// Changes the status label of that id; without one nothing happens.
  virtual void setStatus(const ControlID& id, std::string_view text) = 0;
  /// Enables or disables the button of that id; without one nothing happens.
  virtual void setEnabled(const ControlID& id, bool isEnabled) = 0;

  /// Shows it in front of the program's other windows, with the keyboard. Does
  /// not activate the application.
  virtual void show() = 0;
};

}  // namespace vembrix
