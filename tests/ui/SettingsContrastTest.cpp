// Everything in the settings window is legible: the contrast, as WCAG 2 defines it, of each text
// with its background.

#include <gmock/gmock.h>

#include "platform/portable/SystemColorValues.h"
#include "support/Contrast.h"
#include "support/SettingsPages.h"

namespace vembrix {
namespace {

std::vector<Appearance> appearancesOf(const WindowChrome& chrome) {
  if (chrome.appearance) return {*chrome.appearance};
  return {Appearance::Light, Appearance::Dark};
}

/// Returns the root's lightest and darkest background.
std::vector<Srgb> rootGrounds(const SettingsContent& content, Appearance appearance) {
  const Srgb window = resolved(content.chrome.background, appearance);
  const auto* themed = std::get_if<ThemedContent>(&content.body);
  if (!themed) return {window};
  if (const auto* color = std::get_if<Color>(&themed->backdrop)) {
    return {over(resolved(*color, appearance), window)};
  }
  if (const auto* gradient = std::get_if<GradientBackdrop>(&themed->backdrop)) {
    std::vector<Srgb> grounds;
    for (const Color& color : gradient->colors) grounds.push_back(resolved(color, appearance));
    return grounds;
  }
  if (const auto* material = std::get_if<Material>(&themed->backdrop)) {
    return {groundOf(*material, appearance)};
  }
  return {window};
}

/// Returns the background of a page.
std::vector<Srgb> pageGrounds(const SettingsContent& content, Appearance appearance) {
  std::vector<Srgb> grounds = rootGrounds(content, appearance);
  const auto* themed = std::get_if<ThemedContent>(&content.body);
  if (!themed || !themed->card || !themed->card->fill) return grounds;
  for (Srgb& ground : grounds) ground = over(resolved(*themed->card->fill, appearance), ground);
  return grounds;
}

/// Returns the colours of all texts on a page.
std::vector<Color> textColors(const SettingsForm& form) {
  std::vector<Color> colors;
  const auto collect = [&](const auto& control) {
    if constexpr (requires { control.style; }) colors.push_back(control.style.color);
    if constexpr (requires { control.nameStyle; }) colors.push_back(control.nameStyle.color);
  };
  for (const FormRow& row : form.rows) {
    std::visit([&](const auto& kind) { std::visit(collect, kind.control); }, row);
    if (const auto* labelled = std::get_if<ControlRow>(&row)) {
      colors.push_back(labelled->labelStyle.color);
    }
  }
  return colors;
}

class SettingsContrastTest : public SettingsPages {
 protected:
  template <typename Check>
  void forEachPage(const Check& check) {
    for (const AppTheme& theme : AppTheme::all()) {
      for (const TabKind& tab : kTabs) {
        const SettingsContent& content = open(tab.label, theme.name).content();
        for (const Appearance appearance : appearancesOf(content.chrome)) {
          SCOPED_TRACE(theme.name + ", " + std::string(tab.label) +
                       (appearance == Appearance::Dark ? ", dark" : ", light"));
          check(theme, content, appearance);
        }
      }
    }
  }
};

TEST_F(SettingsContrastTest, TheMeasureIsThatOfTheStandard) {
  EXPECT_NEAR(contrast(kBlack, kWhite), 21, 1e-9);
  EXPECT_NEAR(contrast(kWhite, kWhite), 1, 1e-9);
  EXPECT_NEAR(contrast(Srgb{119 / 255.0, 119 / 255.0, 119 / 255.0}, kWhite), 4.48, 0.01);
}

TEST_F(SettingsContrastTest, EveryTextOfEveryPageIsLegibleInEveryTheme) {
  int count = 0;
  forEachPage([&](const AppTheme&, const SettingsContent& content, Appearance appearance) {
    for (const Srgb& ground : pageGrounds(content, appearance)) {
      for (const Color& color : textColors(window().tab().form)) {
        EXPECT_GE(contrast(resolved(color, appearance), ground), kLegible)
            << (color.systemColor() ? static_cast<int>(*color.systemColor()) : -1);
        count += 1;
      }
    }
  });
  EXPECT_GT(count, 7 * 30);
}

TEST_F(SettingsContrastTest, TabsThatAreNotSelectedAreLegibleInEveryTheme) {
  forEachPage([&](const AppTheme& theme, const SettingsContent& content, Appearance appearance) {
    const auto* themed = std::get_if<ThemedContent>(&content.body);
    if (!themed) return;
    for (const TabButton& button : themed->page.buttons) {
      if (button.isSelected) {
        EXPECT_EQ(button.style.color, theme.accent) << "the theme's own choice";
        continue;
      }
      for (const Srgb& ground : rootGrounds(content, appearance)) {
        EXPECT_GE(contrast(resolved(button.style.color, appearance), ground), kLegible);
      }
    }
  });
}

TEST_F(SettingsContrastTest, AColourWithAnAlphaOfItsOwnTakesOnlyTheComponentsOfTheSystems) {
  EXPECT_EQ(resolved(Color(SystemColor::SecondaryLabel), Appearance::Dark), (Srgb{1, 1, 1, 0.6}));
  EXPECT_EQ(resolved(Color(SystemColor::SecondaryLabel, 0.3), Appearance::Dark),
            (Srgb{1, 1, 1, 0.3}));
  EXPECT_EQ(resolved(Color(Srgb{0.1, 0.2, 0.3, 0.4}), Appearance::Dark),
            (Srgb{0.1, 0.2, 0.3, 0.4}));
}

}  // namespace
}  // namespace vembrix
