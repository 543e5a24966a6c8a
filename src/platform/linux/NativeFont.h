#pragma once

#include <QFont>

namespace vembrix {

/// The font of titles in the menu bar. Needs a Qt application.
QFont menuBarFont();

}  // namespace vembrix
