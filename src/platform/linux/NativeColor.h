#pragma once

#include <QColor>
#include <QPalette>

#include "platform/Color.h"

namespace vembrix {

// Colours as Qt draws them. Any thread.

/// Components outside 0 to 1 count as the nearest bound. The system's colours
/// are those of macOS.
QColor nativeColor(const Color& color, Appearance appearance);

/// The same in light and dark.
QColor nativeColor(const Srgb& color);

/// What stands behind the status item.
QColor menuBarColor(Appearance appearance);
/// Titles and template images on it.
QColor menuBarTextColor(Appearance appearance);

/// Of menus and the controls in them.
QPalette menuPalette(Appearance appearance);

/// Of fields in which text is edited.
QPalette editFieldPalette(Appearance appearance);

}  // namespace vembrix
