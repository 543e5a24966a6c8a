#include "settings/AppTheme.h"

namespace vembrix {
namespace {

constexpr Srgb white(double alpha) {
  return {1, 1, 1, alpha};
}
constexpr Srgb black(double alpha) {
  return {0, 0, 0, alpha};
}

std::vector<AppTheme> makeThemes() {
  using Navigation = AppTheme::Navigation;
  return {
      {.name = "Stock",
       .blurb = "The standard macOS controls, exactly as before.",
       .isDark = {},
       .background = AppTheme::Standard{},
       .accent = Color(SystemColor::ControlAccent),
       .cardFill = {},
       .cardStroke = {},
       .cornerRadius = 6,
       .usesMonoFont = false,
       .navigation = Navigation::Pills},
      {.name = "Alpine",
       .blurb = "Airy and calm, after Things 3 — soft off-white, a single quiet blue, room to "
                "breathe.",
       .isDark = false,
       .background = AppTheme::Solid{Srgb{0.96, 0.965, 0.973}},
       .accent = Srgb{0.29, 0.56, 0.85},
       .cardFill = kWhite,
       .cardStroke = black(0.06),
       .cornerRadius = 10,
       .usesMonoFont = false,
       .navigation = Navigation::Sidebar},
      {.name = "Coral",
       .blurb = "Dark launcher energy, after Raycast — near-black panel, coral highlights, rounded "
                "cards.",
       .isDark = true,
       .background = AppTheme::Solid{Srgb{0.1, 0.1, 0.11}},
       .accent = Srgb{1.0, 0.39, 0.39},
       .cardFill = white(0.055),
       .cardStroke = white(0.09),
       .cornerRadius = 12,
       .usesMonoFont = false,
       .navigation = Navigation::Pills},
      {.name = "Paper",
       .blurb =
           "Stark and typographic, after iA Writer — pure white, monospaced type, one electric "
           "blue.",
       .isDark = false,
       .background = AppTheme::Solid{kWhite},
       .accent = Srgb{0.0, 0.64, 1.0},
       .cardFill = {},
       .cardStroke = {},
       .cornerRadius = 3,
       .usesMonoFont = true,
       .navigation = Navigation::Underline},
      {.name = "Graphite",
       .blurb = "Precise and engineered, after Linear — ink black, indigo accent, hairline card "
                "borders.",
       .isDark = true,
       .background = AppTheme::Solid{Srgb{0.055, 0.055, 0.07}},
       .accent = Srgb{0.37, 0.42, 0.82},
       .cardFill = white(0.045),
       .cardStroke = white(0.07),
       .cornerRadius = 8,
       .usesMonoFont = false,
       .navigation = Navigation::Sidebar},
      {.name = "Sorbet",
       .blurb = "Playful and warm, after Arc — a lavender-to-peach wash with big friendly corners.",
       .isDark = false,
       .background = AppTheme::Gradient{{Srgb{0.93, 0.89, 1.0}, Srgb{1.0, 0.91, 0.88}}},
       .accent = Srgb{0.58, 0.35, 0.84},
       .cardFill = white(0.6),
       .cardStroke = white(0.8),
       .cornerRadius = 16,
       .usesMonoFont = false,
       .navigation = Navigation::Pills},
      {.name = "Frost",
       .blurb = "Frosted glass, after Fantastical and the new macOS settings — translucent panels, "
                "red accent.",
       .isDark = {},
       .background = AppTheme::Vibrancy{AppTheme::Material::Sidebar},
       .accent = Srgb{0.99, 0.26, 0.23},
       .cardFill = Color(SystemColor::TextBackground, 0.45),
       .cardStroke = Color(SystemColor::Separator),
       .cornerRadius = 10,
       .usesMonoFont = false,
       .navigation = Navigation::Sidebar},
  };
}

}  // namespace

std::optional<Appearance> AppTheme::appearance() const {
  if (!isDark) return std::nullopt;
  return *isDark ? Appearance::Dark : Appearance::Light;
}

Font AppTheme::font(Font::Weight weight, std::optional<double> size) const {
  return {.design = usesMonoFont ? Font::Design::Monospaced : Font::Design::System,
          .weight = weight,
          .size = size};
}

const std::vector<AppTheme>& AppTheme::all() {
  static const std::vector<AppTheme> themes = makeThemes();
  return themes;
}

const AppTheme& AppTheme::stock() {
  return all().front();
}

}  // namespace vembrix
