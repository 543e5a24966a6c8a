#pragma once

#include <QString>
#include <string_view>

namespace vembrix {

/// The text of UTF-8 bytes as XML 1.0 can hold it: U+FFFD in the place of
/// malformed sequences and of characters that XML does not have.
QString xmlText(std::string_view utf8);

}  // namespace vembrix
