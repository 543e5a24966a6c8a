#include "platform/linux/NativeFont.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <cmath>

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

}  // namespace

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

int lineHeight(const QFont& font) {
  const QFontMetricsF metrics(font);
  return static_cast<int>(std::ceil(metrics.ascent()) + std::ceil(metrics.descent()));
}

double middleBaseline(const QFont& font, double height, double scale) {
  return std::round((height + QFontMetricsF(font).capHeight()) / 2 * scale) / scale;
}

}  // namespace vembrix
