#pragma once

#include <QFont>

#include "platform/Font.h"

namespace vembrix {

/// The font of titles in the menu bar. Needs a Qt application.
QFont menuBarFont();

/// One of the interface's fonts. Needs a Qt application.
QFont nativeFont(const Font& font);

}  // namespace vembrix
