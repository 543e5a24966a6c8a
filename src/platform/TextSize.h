#pragma once

#include <string_view>

#include "platform/Font.h"
#include "platform/Geometry.h"

namespace vembrix {

/// How large the text is on one line, in points: as wide as it runs, as high as a
/// line of the font. The text is UTF-8; what is not is replaced. Main thread.
Size textSize(std::string_view text, const Font& font);

}  // namespace vembrix
