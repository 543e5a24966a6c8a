#pragma once

#include <QPalette>

#include "platform/Color.h"

class QWidget;

namespace vembrix {

// Colours of the settings window follow light and dark through its palette, which every widget
// inherits; widgets with a colour of their own resolve it again when the palette changes. Main
// thread.

/// Returns the settings window's palette: the system's colours.
QPalette settingsPalette(Appearance appearance);

/// Returns the appearance of the palette.
Appearance appearanceOf(const QPalette& palette);

/// Keeps the widget's text in that colour for the widget's life; fainter while it is disabled.
void followTextColor(QWidget& widget, const Color& color);

}  // namespace vembrix
