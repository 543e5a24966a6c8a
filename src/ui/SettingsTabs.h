#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "platform/SettingsWindow.h"

namespace vembrix {

// The tabs of the settings window. A page shows the settings and Spaces at its creation, does not
// follow later changes, and writes each setting as soon as the user changes it. Main thread.

/// The window controller's callbacks and state for the pages.
struct TabContext {
  /// The user chose a theme, by its name.
  std::function<void(const std::string& name)> themeSelected;
  std::function<void()> copyDiagnosticLog;
  std::function<void()> copyLogCommand;
  /// The status line of the Diagnostics tab.
  std::string diagnosticsStatus;
  bool canCopyDiagnosticLog = true;
};

/// Controls of the Diagnostics tab that change while they are shown.
inline constexpr const char* kDiagnosticsStatusID = "diagnostics-status";
inline constexpr const char* kCopyDiagnosticLogID = "copy-diagnostic-log";

SettingsForm makeSignTab(const TabContext& context);
SettingsForm makeColorsTab(const TabContext& context);
SettingsForm makeMenuBarTab(const TabContext& context);
SettingsForm makeThemeTab(const TabContext& context);
SettingsForm makeDiagnosticsTab(const TabContext& context);
SettingsForm makeAboutTab(const TabContext& context);

/// A tab before its page is created.
struct TabKind {
  std::string_view identifier;
  /// The name that the user sees.
  std::string_view label;
  /// The tab's part in the names of preview pictures.
  std::string_view fileName;
  SettingsForm (*makeForm)(const TabContext& context);
};

/// In display order.
inline constexpr std::array<TabKind, 6> kTabs = {
    {{"sign", "Label", "label", makeSignTab},
     {"colors", "Colors", "colors", makeColorsTab},
     {"menubar", "Menu Bar", "menubar", makeMenuBarTab},
     {"theme", "Theme", "theme", makeThemeTab},
     {"diagnostics", "Diagnostics", "diagnostics", makeDiagnosticsTab},
     {"about", "About", "about", makeAboutTab}}};
inline constexpr int kTabCount = static_cast<int>(kTabs.size());

/// Returns the index in kTabs of the tab whose page `makeForm` creates.
constexpr int tabIndexOf(SettingsForm (*makeForm)(const TabContext&)) {
  int index = 0;
  while (kTabs.at(static_cast<std::size_t>(index)).makeForm != makeForm) index += 1;
  return index;
}
inline constexpr int kThemeTabIndex = tabIndexOf(makeThemeTab);

/// Creates the tab at that index of kTabs.
SettingsTab makeTab(int index, const TabContext& context);

/// Returns a popup that shows the item of that title; empty if there is no such item.
Popup popupOf(std::vector<std::string> items, std::string_view selectedTitle,
              std::function<void(int index, const std::string& title)> onSelect);
Checkbox checkboxOf(std::string title, bool isOn, std::function<void(bool isOn)> onChange);

}  // namespace vembrix
