#pragma once

#include <optional>
#include <vector>

#include "platform/SettingsWindow.h"
#include "settings/AppTheme.h"

namespace vembrix {

// The look of a theme in the settings window. Any thread.

WindowChrome windowChrome(const AppTheme& theme);
Backdrop backdropOf(const AppTheme& theme);
NavigationLayout navigationLayout(AppTheme::Navigation navigation);
/// Empty for a theme without card colours.
std::optional<Card> cardOf(const AppTheme& theme);

/// Returns the buttons of all tabs; the one at `selected` is selected.
std::vector<TabButton> tabButtons(const AppTheme& theme, int selected);

/// Sets every text of the page in the monospaced font of its size and weight, for a theme that asks
/// for it.
void applyThemeTypography(SettingsForm& form, const AppTheme& theme);

}  // namespace vembrix
