#pragma once

#include <string_view>

namespace vembrix {

/// The text (UTF-8) without the white space and line ends at both of its ends,
/// of all scripts. Bytes that are no UTF-8 are not white space.
std::string_view trimWhitespace(std::string_view text);

}  // namespace vembrix
