#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "platform/SettingsWindow.h"

namespace vembrix {

// The tabs of the settings window. A page shows the settings and Spaces at its creation, does not
// follow later changes, and writes each setting as soon as the user changes it. Main thread.

/// A tab's identifier and the name that the user sees.
struct TabName {
  std::string_view identifier;
  std::string_view label;
};

/// In display order.
inline constexpr std::array<TabName, 6> kTabNames = {{{"sign", "Label"},
                                                      {"colors", "Colors"},
                                                      {"menubar", "Menu Bar"},
                                                      {"theme", "Theme"},
                                                      {"diagnostics", "Diagnostics"},
                                                      {"about", "About"}}};
inline constexpr int kTabCount = static_cast<int>(kTabNames.size());
inline constexpr int kThemeTabIndex = 3;

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

/// Creates the tab of that index in kTabNames.
SettingsTab makeTab(int index, const TabContext& context);

SettingsForm makeSignTab();
SettingsForm makeColorsTab();
SettingsForm makeMenuBarTab();
SettingsForm makeThemeTab(const TabContext& context);
SettingsForm makeDiagnosticsTab(const TabContext& context);
SettingsForm makeAboutTab();

/// Returns a popup that shows the item of that title; none where it is missing.
Popup popupOf(std::vector<std::string> items, std::string_view selectedTitle,
              std::function<void(int index, const std::string& title)> onSelect);
Checkbox checkboxOf(std::string title, bool isOn, std::function<void(bool isOn)> onChange);

}  // namespace vembrix
