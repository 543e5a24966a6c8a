#pragma once

class QColor;
class QPainter;
class QPalette;
class QRect;

namespace vembrix {

// The common look of all menus: the dropdown and those of popup buttons.

/// In points: the corner radius of a menu, the least height of an item, the gap above the first
/// item and below the last, and the distance from the edges of the menu to the highlight.
inline constexpr int kMenuCornerRadius = 6;
inline constexpr int kMenuRowHeight = 22;
inline constexpr int kMenuPadding = 5;
inline constexpr int kMenuHighlightInset = 5;

/// Paints the background and the edge of a menu, in the palette's colours of windows and their
/// text. Without a compositor the corners outside the panel get the colour of the edge, because the
/// window's shape may show parts of them.
void paintMenuPanel(QPainter& painter, const QRect& rect, const QPalette& palette);

/// Paints the rounded highlight of the chosen item, at that distance from both sides of the item.
void paintMenuHighlight(QPainter& painter, const QRect& item, int inset, const QColor& color);

}  // namespace vembrix
