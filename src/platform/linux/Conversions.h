#pragma once

#include <QColor>
#include <QFont>

#include "platform/Color.h"
#include "platform/Font.h"

namespace vembrix {

// Converts values of the seam to Qt's.

/// Converts a colour; components are clamped to 0 to 1. The system's colours are those of macOS.
/// Any thread.
QColor nativeColor(const Color& color, Appearance appearance);

/// Converts a colour that is the same in light and dark. Any thread.
QColor nativeColor(const Srgb& color);

/// Returns the font of titles in the menu bar. Needs a Qt application.
QFont menuBarFont();

/// Returns a font of the interface. Needs a Qt application.
QFont nativeFont(const Font& font);

}  // namespace vembrix
