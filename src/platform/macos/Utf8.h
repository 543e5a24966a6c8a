#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vembrix {

/// The text with every ill-formed part as one U+FFFD (a truncated sequence is
/// one part, a stray byte another); nothing when the text is UTF-8 as it is.
/// Any thread.
std::optional<std::string> repairedUtf8(std::string_view text);

}  // namespace vembrix
