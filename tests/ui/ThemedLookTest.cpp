#include "ui/ThemedLook.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

using Navigation = AppTheme::Navigation;

const AppTheme& themeNamed(std::string_view name) {
  return *std::ranges::find(AppTheme::all(), name, &AppTheme::name);
}

TabButton selectedButton(std::string_view theme) {
  return tabButtons(themeNamed(theme), 0)[0];
}
TabButton otherButton(std::string_view theme) {
  return tabButtons(themeNamed(theme), 0)[1];
}

TEST(ThemedLookTest, EveryTabHasOneButtonInTheirOrderAndOneIsSelected) {
  for (int selected = 0; selected < 6; ++selected) {
    const std::vector<TabButton> buttons = tabButtons(themeNamed("Alpine"), selected);
    std::vector<std::string> texts;
    texts.reserve(buttons.size());
    for (const TabButton& button : buttons) texts.push_back(button.text);
    EXPECT_THAT(texts, testing::ElementsAre("Label", "Colors", "Menu Bar", "Theme", "Diagnostics",
                                            "About"));
    EXPECT_EQ(std::ranges::count_if(buttons, &TabButton::isSelected), 1);
    EXPECT_TRUE(buttons.at(static_cast<std::size_t>(selected)).isSelected);
  }
}

TEST(ThemedLookTest, StockIsPlainByItsNameAlone) {
  AppTheme theme = themeNamed("Coral");
  EXPECT_FALSE(theme.isPlain());
  theme.name = "Stock";
  EXPECT_TRUE(theme.isPlain());
  EXPECT_EQ(windowChrome(theme).background, Color(SystemColor::WindowBackground));
  EXPECT_TRUE(windowChrome(theme).showsTitle);
}

TEST(ThemedLookTest, TheWindowBackgroundIsThatOfTheTheme) {
  EXPECT_EQ(windowChrome(themeNamed("Alpine")).background, Color(Srgb{0.96, 0.965, 0.973}));
  EXPECT_EQ(windowChrome(themeNamed("Sorbet")).background, Color(Srgb{0.93, 0.89, 1.0}));
  EXPECT_EQ(windowChrome(themeNamed("Frost")).background, Color(Srgb{0, 0, 0, 0}));
  AppTheme theme = themeNamed("Sorbet");
  theme.background = AppTheme::Gradient{};
  EXPECT_EQ(windowChrome(theme).background, Color(SystemColor::WindowBackground));
  theme.background = AppTheme::Standard{};
  EXPECT_EQ(windowChrome(theme).background, Color(SystemColor::WindowBackground));
}

TEST(ThemedLookTest, TheBackdropIsThatOfTheTheme) {
  EXPECT_EQ(backdropOf(themeNamed("Paper")), Backdrop(Color(kWhite)));
  EXPECT_EQ(backdropOf(themeNamed("Sorbet")),
            Backdrop(GradientBackdrop{{Srgb{0.93, 0.89, 1.0}, Srgb{1.0, 0.91, 0.88}}}));
  EXPECT_EQ(backdropOf(themeNamed("Frost")), Backdrop(Material::Sidebar));
  EXPECT_EQ(backdropOf(themeNamed("Stock")), Backdrop());
}

TEST(ThemedLookTest, ASidebarStandsAtTheLeftOfALine) {
  const NavigationLayout layout = navigationLayout(Navigation::Sidebar);
  EXPECT_EQ(layout.axis, NavigationLayout::Axis::Vertical);
  EXPECT_EQ(layout.spacing, 2);
  EXPECT_EQ(layout.top, 48);
  EXPECT_EQ(layout.leading, 12);
  EXPECT_EQ(layout.buttonWidth, 128);
  ASSERT_TRUE(layout.separator);
  EXPECT_EQ(layout.separator->leading, 150);
  EXPECT_EQ(layout.separator->width, 1);
  EXPECT_EQ(layout.separator->color, Color(SystemColor::Separator));
  EXPECT_EQ(layout.content,
            (Insets{.top = 40, .leading = 150 + 1 + 12, .bottom = 14, .trailing = 14}));
}

TEST(ThemedLookTest, PillsAndUnderlinedTabsStandInACentredRow) {
  for (const Navigation navigation : {Navigation::Pills, Navigation::Underline}) {
    const NavigationLayout layout = navigationLayout(navigation);
    EXPECT_EQ(layout.axis, NavigationLayout::Axis::Horizontal);
    EXPECT_EQ(layout.top, 38);
    EXPECT_EQ(layout.leading, std::nullopt);
    EXPECT_EQ(layout.buttonWidth, std::nullopt);
    EXPECT_EQ(layout.separator, std::nullopt);
    EXPECT_EQ(layout.content,
              (Insets{.top = 38 + 26 + 14, .leading = 16, .bottom = 16, .trailing = 16}));
  }
  EXPECT_EQ(navigationLayout(Navigation::Pills).spacing, 4);
  EXPECT_EQ(navigationLayout(Navigation::Underline).spacing, 10);
}

TEST(ThemedLookTest, ACardHasWhatTheThemeGivesIt) {
  EXPECT_EQ(cardOf(themeNamed("Alpine")), (Card{Color(kWhite), Color(Srgb{0, 0, 0, 0.06}), 10}));
  EXPECT_EQ(cardOf(themeNamed("Paper")), std::nullopt);
  AppTheme theme = themeNamed("Alpine");
  theme.cardFill.reset();
  EXPECT_EQ(cardOf(theme), (Card{std::nullopt, Color(Srgb{0, 0, 0, 0.06}), 10}));
  theme.cardFill = kWhite;
  theme.cardStroke.reset();
  EXPECT_EQ(cardOf(theme), (Card{Color(kWhite), std::nullopt, 10}));
}

TEST(ThemedLookTest, TheSelectedButtonHasTheAccentInSemibold) {
  for (const AppTheme& theme : AppTheme::all()) {
    const Font::Design design =
        theme.name == "Paper" ? Font::Design::Monospaced : Font::Design::System;
    const TabButton selected = selectedButton(theme.name);
    EXPECT_EQ(selected.style.color, theme.accent);
    EXPECT_EQ(selected.style.font, (Font{design, Font::Weight::Semibold, 12.5}));
    EXPECT_TRUE(selected.isSelected);
    const TabButton other = otherButton(theme.name);
    EXPECT_EQ(other.style.color.systemColor(), SystemColor::SecondaryLabel);
    EXPECT_EQ(other.style.font, (Font{design, Font::Weight::Regular, 12.5}));
    EXPECT_EQ(other.background, std::nullopt);
    EXPECT_FALSE(other.isSelected);
  }
}

TEST(ThemedLookTest, ButtonsAreShapedByTheNavigation) {
  const TabButton pill = selectedButton("Coral");
  EXPECT_EQ(pill.cornerRadius, 13);
  EXPECT_EQ(pill.background, Color(Srgb{1.0, 0.39, 0.39, 0.15}));
  EXPECT_EQ(pill.alignment, TabButton::Alignment::Center);
  EXPECT_EQ(pill.indent, 0);
  EXPECT_EQ(pill.underline, std::nullopt);

  const TabButton item = selectedButton("Graphite");
  EXPECT_EQ(item.cornerRadius, 6);
  EXPECT_EQ(item.background, Color(Srgb{0.37, 0.42, 0.82, 0.15}));
  EXPECT_EQ(item.alignment, TabButton::Alignment::Leading);
  EXPECT_EQ(item.indent, 10);
  EXPECT_EQ(otherButton("Graphite").cornerRadius, 6);

  const TabButton text = selectedButton("Paper");
  EXPECT_EQ(text.background, std::nullopt);
  EXPECT_EQ(text.underline, themeNamed("Paper").accent);
  EXPECT_EQ(otherButton("Paper").underline, std::nullopt);
}

TEST(ThemedLookTest, ADynamicAccentKeepsItsNameBehindASelectedButton) {
  EXPECT_EQ(selectedButton("Stock").background, Color(SystemColor::ControlAccent, 0.15));
}

TEST(ThemedLookTest, ButtonsAreMeasuredAsOnEverySystem) {
  EXPECT_EQ(tab_button_metrics::kExtraWidth, 20);
  EXPECT_EQ(tab_button_metrics::kHeight, 26);
  EXPECT_EQ(tab_button_metrics::kUnderlineInset, 10);
  EXPECT_EQ(tab_button_metrics::kUnderlineBottom, 1);
  EXPECT_EQ(tab_button_metrics::kUnderlineHeight, 2);
}

/// Returns the fonts of all texts of a page that have one.
std::vector<Font> fontsOf(const SettingsForm& form) {
  std::vector<Font> fonts;
  const auto collect = [&](const auto& control) {
    if constexpr (requires { control.style; }) fonts.push_back(control.style.font);
    if constexpr (requires { control.nameStyle; }) fonts.push_back(control.nameStyle.font);
  };
  for (const FormRow& row : form.rows) {
    std::visit([&](const auto& kind) { std::visit(collect, kind.control); }, row);
    if (const auto* labelled = std::get_if<ControlRow>(&row)) {
      fonts.push_back(labelled->labelStyle.font);
    }
  }
  return fonts;
}

TEST(ThemedLookTest, AMonospacedThemeSetsEveryTextSoAndKeepsSizeAndWeight) {
  for (int i = 0; i < kTabCount; ++i) {
    SettingsForm form = makeTab(i, {}).form;
    const std::vector<Font> before = fontsOf(form);
    applyThemeTypography(form, themeNamed("Paper"));
    const std::vector<Font> after = fontsOf(form);
    ASSERT_EQ(before.size(), after.size());
    ASSERT_FALSE(before.empty());
    for (std::size_t j = 0; j < before.size(); ++j) {
      EXPECT_EQ(after[j], (Font{Font::Design::Monospaced, before[j].weight, before[j].size}));
    }
  }
}

TEST(ThemedLookTest, OtherThemesLeaveTheFontsAsTheyAre) {
  SettingsForm form = makeTab(0, {}).form;
  const std::vector<Font> before = fontsOf(form);
  applyThemeTypography(form, themeNamed("Coral"));
  EXPECT_EQ(fontsOf(form), before);
}

}  // namespace
}  // namespace vembrix
