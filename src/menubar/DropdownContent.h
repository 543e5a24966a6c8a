#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Color.h"
#include "platform/DropdownMenu.h"
#include "spaces/SpaceInfo.h"
#include "ui/AppTheme.h"

namespace vembrix {

// What the dropdown shows, by the model of Spaces and the settings. Main thread.

/// A row for each desktop, in the model's order, then the commands. The rows act
/// on the Spaces as they are now, and keep nothing of the model.
std::vector<MenuItem> makeDropdownItems(std::function<void()> showPreferences);

/// The desktop's row, as it is now.
std::unique_ptr<SpaceRowView> makeSpaceRow(const SpaceInfo& space);

/// The Space's colour as it was chosen, of the two the one that the colour mode
/// uses.
Color dotColor(const SpaceInfo& space);

/// The rim of the heat palette, legible on the menu, as opaque as the Space is
/// warm; nothing for the active Space and those that are all but cold.
std::optional<Color> heatGlow(const SpaceInfo& space);
/// The same for a heat from 0 to 1.
std::optional<Color> heatGlow(double heat);

/// Gives the command the theme's font; the plain system look keeps the menu's.
void applyThemeFont(const AppTheme& theme, MenuCommand& command);

}  // namespace vembrix
