#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Color.h"
#include "platform/DropdownMenu.h"
#include "settings/AppTheme.h"
#include "spaces/SpaceInfo.h"

namespace vembrix {

// The content of the dropdown, from the model of Spaces and the settings. Main thread.

/// Returns a row for each desktop, in the model's order, then the commands. The rows keep copies of
/// the present Spaces, no references into the model.
std::vector<MenuItem> makeDropdownItems(std::function<void()> showPreferences);

/// Returns the desktop's row in its present state.
std::unique_ptr<SpaceRowView> makeSpaceRow(const SpaceInfo& space);

/// Returns the Space's chosen colour for the current colour mode.
Color dotColor(const SpaceInfo& space);

/// Returns the heat palette's rim colour, legible on the menu, with an opacity that grows with the
/// heat; empty for the active Space and for nearly cold ones.
std::optional<Color> heatGlow(const SpaceInfo& space);
/// Returns the same for a heat from 0 to 1.
std::optional<Color> heatGlow(double heat);

/// Gives the command the theme's font; the plain system look uses the menu's own.
void applyThemeFont(const AppTheme& theme, MenuCommand& command);

}  // namespace vembrix
