#pragma once

#include <QColor>
#include <QPalette>

#include "platform/Color.h"

namespace vembrix {

// Colours of the status item and its menu. Any thread.

/// The colour behind the status item.
QColor menuBarColor(Appearance appearance);
/// The colour of titles and template images on it.
QColor menuBarTextColor(Appearance appearance);

/// The palette of menus and their controls. Its placeholder text is that of key equivalents.
QPalette menuPalette(Appearance appearance);

/// The palette of edit fields.
QPalette editFieldPalette(Appearance appearance);

}  // namespace vembrix
