#pragma once

#include <QProxyStyle>

namespace vembrix {

/// Draws menus with the proportions of macOS: rounded corners, an inset rounded highlight, thin
/// separators, fainter key equivalents. The colours are those of the menu's palette; an action may
/// have its highlight as a QColor in its data.
class MenuStyle : public QProxyStyle {
 public:
  /// The menu's, in points.
  static constexpr int kCornerRadius = 6;
  /// From the edges of the menu to the highlight, and the highlight's corners; points.
  static constexpr int kHighlightInset = 5;
  static constexpr int kHighlightRadius = 4;

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

/// Paints the ground and the edge of a menu, in the palette's colours of windows and their text.
/// Without a compositor the rest of the rectangle has the colour of the edge, so that the corners
/// of the window's shape have no other.
void paintMenuPanel(QPainter& painter, const QRect& rect, const QPalette& palette);

}  // namespace vembrix
