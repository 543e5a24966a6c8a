#include "platform/linux/NativeFont.h"

#include <QFontDatabase>
#include <QStringList>

namespace vembrix {

QFont menuBarFont() {
  // Inter has the proportions of the macOS system font; without it the desktop's
  // own font serves. Last, so that it draws what no other has: emoji.
  const QString general = QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
  QFont font;
  font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Inter Display"), general,
                    QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans"),
                    QStringLiteral("Noto Color Emoji")});
  font.setPixelSize(13);
  // As macOS draws text: true shapes, no coloured fringes.
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return font;
}

}  // namespace vembrix
