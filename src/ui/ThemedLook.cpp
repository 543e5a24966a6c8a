#include "ui/ThemedLook.h"

#include "ui/DS.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

using Navigation = AppTheme::Navigation;

constexpr Color kClear{Srgb{0, 0, 0, 0}};
constexpr Color kWindowBackground{SystemColor::WindowBackground};

constexpr double kTabFontSize = 12.5;
constexpr double kSelectedAlpha = 0.15;

namespace sidebar {
constexpr double kTop = 48;
constexpr double kLeading = 12;
constexpr double kSpacing = 2;
constexpr double kButtonWidth = 128;
constexpr double kTextIndent = 10;
constexpr double kCornerRadius = 6;
constexpr double kSeparatorLeading = 150;
constexpr double kSeparatorWidth = 1;
constexpr double kContentTop = 40;
/// The distance of the content from the separator.
constexpr double kContentLeading = 12;
constexpr double kContentInset = 14;
}  // namespace sidebar

/// Metrics of a row of tabs above the page.
namespace bar {
constexpr double kTop = 38;
constexpr double kPillSpacing = 4;
constexpr double kUnderlineSpacing = 10;
/// The distance of the content from the buttons.
constexpr double kContentTop = 14;
constexpr double kContentInset = 16;
/// Half the height of the buttons, which makes full pills.
constexpr double kPillRadius = tab_button_metrics::kHeight / 2;
}  // namespace bar

template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

Material materialOf(AppTheme::Material material) {
  switch (material) {
    case AppTheme::Material::Sidebar:
      break;
  }
  return Material::Sidebar;
}

Color windowBackground(const AppTheme::Background& background) {
  return std::visit(Overloaded{[](const AppTheme::Solid& solid) { return solid.color; },
                               [](const AppTheme::Gradient& gradient) {
                                 return gradient.colors.empty() ? kWindowBackground
                                                                : gradient.colors.front();
                               },
                               [](const AppTheme::Vibrancy&) { return kClear; },
                               [](const AppTheme::Standard&) { return kWindowBackground; }},
                    background);
}

TabButton tabButton(const AppTheme& theme, const TabKind& tab, bool isSelected) {
  TabButton button;
  button.text = tab.label;
  button.isSelected = isSelected;
  button.style.font =
      theme.font(isSelected ? Font::Weight::Semibold : Font::Weight::Regular, kTabFontSize);
  button.style.color = isSelected ? theme.accent : ds::kSecondaryTextColor;
  const auto background =
      isSelected ? std::optional(theme.accent.withAlpha(kSelectedAlpha)) : std::nullopt;
  switch (theme.navigation) {
    case Navigation::Pills:
      button.cornerRadius = bar::kPillRadius;
      button.background = background;
      break;
    case Navigation::Sidebar:
      button.alignment = TabButton::Alignment::Leading;
      button.indent = sidebar::kTextIndent;
      button.cornerRadius = sidebar::kCornerRadius;
      button.background = background;
      break;
    case Navigation::Underline:
      if (isSelected) button.underline = theme.accent;
      break;
  }
  return button;
}

NavigationLayout sidebarLayout() {
  const NavigationLayout::Separator separator{.leading = sidebar::kSeparatorLeading,
                                              .width = sidebar::kSeparatorWidth};
  return {.axis = NavigationLayout::Axis::Vertical,
          .spacing = sidebar::kSpacing,
          .top = sidebar::kTop,
          .leading = sidebar::kLeading,
          .buttonWidth = sidebar::kButtonWidth,
          .separator = separator,
          .content = {.top = sidebar::kContentTop,
                      .leading = separator.leading + separator.width + sidebar::kContentLeading,
                      .bottom = sidebar::kContentInset,
                      .trailing = sidebar::kContentInset}};
}

NavigationLayout barLayout(double spacing) {
  return {.axis = NavigationLayout::Axis::Horizontal,
          .spacing = spacing,
          .top = bar::kTop,
          .leading = {},
          .buttonWidth = {},
          .separator = {},
          .content = {.top = bar::kTop + tab_button_metrics::kHeight + bar::kContentTop,
                      .leading = bar::kContentInset,
                      .bottom = bar::kContentInset,
                      .trailing = bar::kContentInset}};
}

void setMono(TextStyle& style) {
  style.font.design = Font::Design::Monospaced;
}

template <typename Control>
concept Styled = requires(Control control) {
  control.style;
};

void setMono(FormControl& control) {
  std::visit(
      [](auto& kind) {
        if constexpr (Styled<decltype(kind)>) setMono(kind.style);
      },
      control);
  if (auto* grid = std::get_if<ColorGrid>(&control)) setMono(grid->nameStyle);
}

}  // namespace

WindowChrome windowChrome(const AppTheme& theme) {
  WindowChrome chrome{.appearance = theme.appearance()};
  if (theme.isPlain()) return chrome;
  chrome.hasFullSizeContent = true;
  chrome.hasTransparentTitleBar = true;
  chrome.showsTitle = false;
  chrome.background = windowBackground(theme.background);
  return chrome;
}

Backdrop backdropOf(const AppTheme& theme) {
  return std::visit(
      Overloaded{[](const AppTheme::Solid& solid) -> Backdrop { return solid.color; },
                 [](const AppTheme::Gradient& gradient) -> Backdrop {
                   return GradientBackdrop{gradient.colors};
                 },
                 [](const AppTheme::Vibrancy& vibrancy) -> Backdrop {
                   return materialOf(vibrancy.material);
                 },
                 [](const AppTheme::Standard&) -> Backdrop { return std::monostate{}; }},
      theme.background);
}

NavigationLayout navigationLayout(Navigation navigation) {
  switch (navigation) {
    case Navigation::Sidebar:
      return sidebarLayout();
    case Navigation::Pills:
      return barLayout(bar::kPillSpacing);
    case Navigation::Underline:
      break;
  }
  return barLayout(bar::kUnderlineSpacing);
}

std::optional<Card> cardOf(const AppTheme& theme) {
  if (!theme.cardFill && !theme.cardStroke) return std::nullopt;
  return Card{theme.cardFill, theme.cardStroke, theme.cornerRadius};
}

std::vector<TabButton> tabButtons(const AppTheme& theme, int selected) {
  std::vector<TabButton> buttons;
  buttons.reserve(kTabs.size());
  for (int i = 0; i < kTabCount; ++i) {
    buttons.push_back(tabButton(theme, kTabs[static_cast<std::size_t>(i)], i == selected));
  }
  return buttons;
}

void applyThemeTypography(SettingsForm& form, const AppTheme& theme) {
  if (!theme.usesMonoFont) return;
  for (FormRow& row : form.rows) {
    std::visit([](auto& kind) { setMono(kind.control); }, row);
    if (auto* labelled = std::get_if<ControlRow>(&row)) setMono(labelled->labelStyle);
  }
}

}  // namespace vembrix
