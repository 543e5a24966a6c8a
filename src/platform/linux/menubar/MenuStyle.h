#pragma once

#include <QProxyStyle>

namespace vembrix {

/// Draws menus with the proportions of macOS: rounded corners, an inset rounded highlight, thin
/// separators, fainter key equivalents. The colours are those of the menu's palette; an action may
/// have its highlight as a QColor in its data.
class MenuStyle : public QProxyStyle {
 public:
  MenuStyle();

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override;
};

}  // namespace vembrix
