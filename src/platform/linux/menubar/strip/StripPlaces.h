#pragma once

#include <QRect>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/menubar/strip/StripPlacement.h"

namespace vembrix {

// The user's places for the strip, one for each layout of monitors, in the settings. Main thread.

/// Returns the monitors' sizes and positions, the primary one first: "1440x900+0+0".
std::string monitorLayout(const std::vector<QRect>& monitors);

/// Empty if the user has not moved the strip or the stored value is malformed.
std::optional<StripPlace> storedStripPlace(std::string_view layout);

/// Stores the place, or removes it where empty. Other layouts keep theirs.
void storeStripPlace(std::string_view layout, const std::optional<StripPlace>& place);

}  // namespace vembrix
