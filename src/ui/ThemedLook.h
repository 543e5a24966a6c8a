#pragma once

#include <optional>
#include <vector>

#include "platform/SettingsWindow.h"
#include "ui/AppTheme.h"

namespace vembrix {

// How a theme looks in the settings window, as values. Any thread.

/// Whether the theme leaves the window to the system's own look; told by its
/// name alone.
bool isPlain(const AppTheme& theme);

WindowChrome windowChrome(const AppTheme& theme);
Backdrop backdropOf(const AppTheme& theme);
NavigationLayout navigationLayout(AppTheme::Navigation navigation);
/// Nothing for a theme without colours for one.
std::optional<Card> cardOf(const AppTheme& theme);

/// The buttons of all tabs, of which the one at `selected` is selected.
std::vector<TabButton> tabButtons(const AppTheme& theme, int selected);

/// Sets every text of the page in the monospaced system font of its size and
/// weight, for a theme that wants it so.
void applyThemeTypography(SettingsForm& form, const AppTheme& theme);

}  // namespace vembrix
