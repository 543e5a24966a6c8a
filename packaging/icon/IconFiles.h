#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Drawing.h"

namespace icon {

/// The bytes of a PNG file.
std::string png(const Picture& picture);

/// The bytes of an Apple icon image: PNG files with the four letters that say what each
/// is for.
std::string icns(const std::vector<std::pair<std::string, std::string>>& entries);

}  // namespace icon
