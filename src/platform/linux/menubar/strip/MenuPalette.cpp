#include "platform/linux/menubar/strip/MenuPalette.h"

#include "platform/linux/Conversions.h"

namespace vembrix {
namespace {

struct LightAndDark {
  QColor light;
  QColor dark;
};

QColor pick(const LightAndDark& colors, Appearance appearance) {
  return appearance == Appearance::Dark ? colors.dark : colors.light;
}

QColor white(double alpha) {
  return QColor::fromRgbF(1, 1, 1, static_cast<float>(alpha));
}
QColor black(double alpha) {
  return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

}  // namespace

QColor menuBarColor(Appearance appearance) {
  return pick({QColor(246, 246, 246), QColor(40, 40, 42)}, appearance);
}

QColor menuBarTextColor(Appearance appearance) {
  return pick({black(0.85), white(0.85)}, appearance);
}

QPalette menuPalette(Appearance appearance) {
  const QColor ground = menuBarColor(appearance);
  const QColor text = menuBarTextColor(appearance);
  QPalette palette(ground, ground);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    QColor faint = text;
    faint.setAlphaF(0.25F);
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::PlaceholderText,
                   nativeColor(Color(SystemColor::SecondaryLabel), appearance));
  palette.setColor(QPalette::Base, nativeColor(Color(SystemColor::TextBackground), appearance));
  palette.setColor(QPalette::Highlight, nativeColor(Color(SystemColor::ControlAccent), appearance));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

QPalette editFieldPalette(Appearance appearance) {
  QPalette palette = menuPalette(appearance);
  // Selected text keeps its colour.
  palette.setColor(QPalette::Highlight,
                   pick({QColor(179, 215, 255), QColor(63, 99, 139)}, appearance));
  palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Text));
  return palette;
}

}  // namespace vembrix
