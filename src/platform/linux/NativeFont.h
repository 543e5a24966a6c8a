#pragma once

#include <QFont>

#include "platform/Font.h"

namespace vembrix {

/// The font of titles in the menu bar. Needs a Qt application.
QFont menuBarFont();

/// One of the interface's fonts. Needs a Qt application.
QFont nativeFont(const Font& font);

/// How high a line of the font is: whole points, with the whole of every letter.
int lineHeight(const QFont& font);

/// Where the baseline of a line stands whose capitals are in the middle of that
/// height: points from its top, on a whole row of pixels of the scale. Unlike a line
/// box in the middle, it is the same for every font of a size.
double middleBaseline(const QFont& font, double height, double scale);

}  // namespace vembrix
