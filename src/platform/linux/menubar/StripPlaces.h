#pragma once

#include <QRect>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/menubar/StripPlacement.h"

namespace vembrix {

// Where the user has put the strip, for each layout of monitors, in the user's settings.
// Main thread.

/// Names the monitors by size and place, the primary one first: "1440x900+0+0".
std::string monitorLayout(const std::vector<QRect>& monitors);

/// Nothing: the user has put it nowhere, or what is stored makes no sense.
std::optional<StripPlace> storedStripPlace(std::string_view layout);

/// Nothing: forgets it. Other layouts keep theirs.
void storeStripPlace(std::string_view layout, const std::optional<StripPlace>& place);

}  // namespace vembrix
