#pragma once

#include <string_view>

#include "platform/Font.h"
#include "platform/Geometry.h"

namespace vembrix {

/// Returns the size of the text on one line, in points: its width, and the height of a line of the
/// font. The text is UTF-8; ill-formed parts are replaced. Main thread.
Size textSize(std::string_view text, const Font& font);

}  // namespace vembrix
