#include "platform/linux/Conversions.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>

#include "platform/portable/SystemColorValues.h"

namespace vembrix {
namespace {

/// Of menus and controls, in points as the interface counts them.
constexpr double kSystemSize = 13;

QStringList systemFamilies() {
  // Inter has the proportions of the macOS system font; without it the desktop's
  // own font serves. Last, so that it draws what no other has: emoji.
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

/// Qt counts pixels in whole numbers only, its own points in fractions.
double qtPointSize(double size) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double dotsPerInch = screen ? screen->logicalDotsPerInchY() : 96;
  return size * 72 / dotsPerInch;
}

void smooth(QFont& font) {
  // As macOS draws text: true shapes, no coloured fringes.
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
}

/// Not a number counts as 0.
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
