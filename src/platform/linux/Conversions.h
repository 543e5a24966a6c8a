#pragma once

#include <QColor>
#include <QFont>

#include "platform/Color.h"
#include "platform/Font.h"

namespace vembrix {

// The seam's values as Qt's.

/// Converts a colour; components are clamped to 0 to 1. The system's colours are those of macOS.
/// Any thread.
QColor nativeColor(const Color& color, Appearance appearance);

/// The same in light and dark. Any thread.
QColor nativeColor(const Srgb& color);

/// The font of titles in the menu bar. Needs a Qt application.
QFont menuBarFont();

/// One of the interface's fonts. Needs a Qt application.
QFont nativeFont(const Font& font);

}  // namespace vembrix
