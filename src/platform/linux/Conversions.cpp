#include "platform/linux/Conversions.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>

#include "platform/portable/SystemColorValues.h"

namespace vembrix {
namespace {

/// The size of the font of menus and controls, in points.
constexpr double kSystemSize = 13;

QStringList systemFamilies() {
  // Inter has the proportions of the macOS system font. Without it, the desktop's own font is used.
  // The emoji font is last, so that it draws only what the others lack.
  return {QStringLiteral("Inter"),
          QStringLiteral("Inter Display"),
          QFontDatabase::systemFont(QFontDatabase::GeneralFont).family(),
          QStringLiteral("Noto Sans"),
          QStringLiteral("DejaVu Sans"),
          QStringLiteral("Noto Color Emoji")};
}

QStringList monospacedFamilies() {
  return QStringList{QStringLiteral("JetBrains Mono"), QStringLiteral("Noto Sans Mono"),
                     QStringLiteral("DejaVu Sans Mono"),
                     QFontDatabase::systemFont(QFontDatabase::FixedFont).family()} +
         systemFamilies();
}

QFont::Weight nativeWeight(Font::Weight weight) {
  switch (weight) {
    case Font::Weight::Regular:
      return QFont::Normal;
    case Font::Weight::Semibold:
      return QFont::DemiBold;
    case Font::Weight::Heavy:
      return QFont::ExtraBold;
  }
  return QFont::Normal;
}

/// Converts a size to Qt's points: Qt accepts fractions only in these, not in pixels.
double qtPointSize(double size) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double dotsPerInch = screen ? screen->logicalDotsPerInchY() : 96;
  return size * 72 / dotsPerInch;
}

void smooth(QFont& font) {
  // Like macOS, draws true shapes without coloured fringes.
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
}

/// Returns the component between 0 and 1; 0 for NaN.
float component(double value) {
  if (!(value > 0)) return 0;
  return value < 1 ? static_cast<float>(value) : 1;
}

}  // namespace

QColor nativeColor(const Srgb& color) {
  return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                          component(color.alpha));
}

QColor nativeColor(const Color& color, Appearance appearance) {
  return nativeColor(resolved(color, appearance));
}

QFont menuBarFont() {
  QFont font;
  font.setFamilies(systemFamilies());
  font.setPixelSize(13);
  smooth(font);
  return font;
}

QFont nativeFont(const Font& font) {
  QFont native;
  const bool isMonospaced = font.design == Font::Design::Monospaced;
  native.setFamilies(isMonospaced ? monospacedFamilies() : systemFamilies());
  native.setWeight(nativeWeight(font.weight));
  native.setPointSizeF(qtPointSize(font.size.value_or(kSystemSize)));
  smooth(native);
  return native;
}

}  // namespace vembrix
