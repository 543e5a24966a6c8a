#pragma once

#include <QPalette>

#include "platform/Color.h"

class QWidget;

namespace vembrix {

// How colours of the settings window follow light and dark: its palette says
// which of the two it is, every widget in it inherits that, and what has a
// colour of its own resolves it anew when the palette changes. Main thread.

/// Of the settings window: the system's colours.
QPalette settingsPalette(Appearance appearance);

/// The appearance of what has that palette.
Appearance appearanceOf(const QPalette& palette);

/// Keeps the widget's text in that colour as long as the widget lives; fainter
/// where the widget is disabled.
void followTextColor(QWidget& widget, const Color& color);

}  // namespace vembrix
