#pragma once

#include <QString>
#include <optional>
#include <string_view>

namespace vembrix {

/// Whether the bytes begin as a property list in the binary form does.
bool isBinaryPropertyList(std::string_view bytes);

/// The XML form of a property list in the binary form. Nothing when it is
/// malformed, nested too deep, or unfolds to more than 64 MiB.
std::optional<QString> xmlFromBinaryPropertyList(std::string_view bytes);

}  // namespace vembrix
