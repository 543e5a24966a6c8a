#pragma once

#include <string_view>

namespace vembrix {

/// Returns the text (UTF-8) without Unicode white space and line ends at either end. Ill-formed
/// bytes are not white space.
std::string_view trimWhitespace(std::string_view text);

}  // namespace vembrix
