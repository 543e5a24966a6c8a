#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Drawing.h"

namespace icon {

/// Returns the bytes of a PNG file.
std::string png(const Picture& picture);

/// Returns the bytes of an Apple icon image: PNG files, each with four letters for its purpose.
std::string icns(const std::vector<std::pair<std::string, std::string>>& entries);

}  // namespace icon
