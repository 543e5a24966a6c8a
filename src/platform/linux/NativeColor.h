#pragma once

#include <QColor>
#include <QPalette>

#include "platform/Color.h"

namespace vembrix {

// Colours as Qt draws them. Any thread.

/// Converts a colour; components are clamped to 0 to 1. The system's colours are those of macOS.
QColor nativeColor(const Color& color, Appearance appearance);

/// The same in light and dark.
QColor nativeColor(const Srgb& color);

/// The colour behind the status item.
QColor menuBarColor(Appearance appearance);
/// The colour of titles and template images on it.
QColor menuBarTextColor(Appearance appearance);

/// The palette of menus and their controls.
QPalette menuPalette(Appearance appearance);

/// The palette of edit fields.
QPalette editFieldPalette(Appearance appearance);

}  // namespace vembrix
