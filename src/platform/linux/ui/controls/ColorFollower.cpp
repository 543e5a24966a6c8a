#include "platform/linux/ui/controls/ColorFollower.h"

#include <QEvent>
#include <QWidget>

#include "platform/linux/Conversions.h"

namespace vembrix {
namespace {

constexpr float kDisabledAlpha = 0.35F;
constexpr auto kTextRoles = {QPalette::WindowText, QPalette::Text, QPalette::ButtonText};

void setTextColor(QPalette& palette, const QColor& color) {
  QColor faint = color;
  faint.setAlphaF(color.alphaF() * kDisabledAlpha);
  for (const auto role : kTextRoles) {
    palette.setColor(role, color);
    palette.setColor(QPalette::Disabled, role, faint);
  }
}

class ColorFollower : public QObject {
 public:
  ColorFollower(QWidget& widget, const Color& color)
      : QObject(&widget), widget_(widget), color_(color) {
    widget.installEventFilter(this);
    apply();
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) apply();
    return QObject::eventFilter(object, event);
  }

 private:
  void apply() {
    // Setting the palette causes this event, too.
    const Appearance appearance = appearanceOf(widget_.palette());
    if (appearance == applied_) return;
    applied_ = appearance;
    QPalette palette;
    palette.setResolveMask(0);
    setTextColor(palette, nativeColor(color_, appearance));
    widget_.setPalette(palette);
  }

  QWidget& widget_;
  const Color color_;
  std::optional<Appearance> applied_;
};

}  // namespace

QPalette settingsPalette(Appearance appearance) {
  const auto system = [&](SystemColor name) { return nativeColor(Color(name), appearance); };
  const QColor ground = system(SystemColor::WindowBackground);
  QPalette palette(ground, ground);
  setTextColor(palette, system(SystemColor::Label));
  palette.setColor(QPalette::Base, system(SystemColor::TextBackground));
  QColor selection = system(SystemColor::ControlAccent);
  palette.setColor(QPalette::Highlight, selection);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, system(SystemColor::Link));
  return palette;
}

Appearance appearanceOf(const QPalette& palette) {
  return palette.color(QPalette::Window).lightnessF() < 0.5F ? Appearance::Dark : Appearance::Light;
}

void followTextColor(QWidget& widget, const Color& color) {
  new ColorFollower(widget, color);
}

}  // namespace vembrix
